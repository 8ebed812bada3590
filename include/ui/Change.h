// The host's translator: string IDs to display texts.
#ifndef NETINFO_UI_CHANGE_H
#define NETINFO_UI_CHANGE_H

#include <QString>

class Q_DECL_EXPORT Change
{
public:
    /// The display text of the string ID \a key in the translation context \a context, in the current language. A key
    /// without a translation falls back to English, then to \a key itself.
    static QString tr(QString key, QString context);
};

#endif
