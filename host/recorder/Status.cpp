#include "host/recorder/Status.h"

namespace recorder {

QString Status::text() const
{
    const auto with = [this](const char *sentence) {
        return detail.isEmpty() ? QString::fromLatin1(sentence)
                                : QStringLiteral("%1 (%2)").arg(QLatin1String(sentence), detail);
    };
    switch (code) {
    case Ok:
        break;
    case NotAnnounced:
        return with("Connections are recorded by another process, but cannot be announced here: no session bus");
    case OtherRecorder:
        return with("Connections are not recorded here: another process records into this history");
    case NoPermission:
        return with("Connections are not recorded: NetworkManager refuses to be read");
    case NoNetworkManager:
        return with("Connections are not recorded: NetworkManager is not running");
    case NoSystemBus:
        return with("Connections are not recorded: there is no system bus");
    case NoHistory:
        return with("Connections are not recorded: the history cannot be written");
    }
    return {};
}

} // namespace recorder
