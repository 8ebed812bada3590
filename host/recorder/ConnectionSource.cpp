#include "host/recorder/ConnectionSource.h"

namespace recorder {

ConnectionSource::~ConnectionSource() = default;

std::shared_ptr<CounterReader> ConnectionSource::remainder(const zelk::OpenConnection & /*row*/) const
{
    return nullptr;
}

} // namespace recorder
