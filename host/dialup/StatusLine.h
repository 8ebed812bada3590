// The line about recording in the host's status bar.
#ifndef NETINFO_DIALUP_STATUSLINE_H
#define NETINFO_DIALUP_STATUSLINE_H

#include "host/recorder/Recorder.h"

#include <QString>

/// In the host's current language: what is not being recorded and why; else the names of the connections \a active that
/// are being recorded; empty when there is nothing to say.
QString statusLine(const recorder::Status &status, const QVector<recorder::Announcement> &active);

#endif
