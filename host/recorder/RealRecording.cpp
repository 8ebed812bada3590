#include "host/recorder/RealRecording.h"

namespace recorder {

namespace {

constexpr int firstRetryMs = 100; // the one before us may be about to go
constexpr int longestRetryMs = 5000;

} // namespace

RealRecording::RealRecording(Recorder &recorder, MakeSource makeSource, QObject *parent)
    : QObject(parent), m_recorder(recorder), m_makeSource(std::move(makeSource)), m_lock(recorder.historyPath())
{
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &RealRecording::tryToBegin);
}

RealRecording::~RealRecording()
{
    end();
}

void RealRecording::begin()
{
    if (isRecording() || m_retry.isActive())
        return;
    m_retry.setInterval(firstRetryMs);
    tryToBegin();
}

void RealRecording::tryToBegin()
{
    const Status status = m_lock.acquire();
    const bool isNews = status != m_lockStatus;
    m_lockStatus = status;
    if (status.code == Status::Ok) {
        m_source = m_makeSource();
        m_recorder.addSource(m_source);
    } else {
        m_retry.start();
        m_retry.setInterval(std::min(m_retry.interval() * 2, longestRetryMs));
    }
    if (isNews || isRecording())
        emit changed();
}

void RealRecording::end()
{
    m_retry.stop();
    m_lockStatus = {};
    if (m_source)
        m_recorder.removeSource(m_source);
    m_source = nullptr;
    m_lock.release();
}

} // namespace recorder
