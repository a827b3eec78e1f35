#pragma once

#include <QByteArray>
#include <QString>

namespace orvo::host {

// The host's reversible cipher for stored passwords. Convert turns typed text into its stored
// form (marked, so that it can tell the two apart) and a stored form back into the text.
class PasswordCipher {
public:
    // The key the cipher is armed with until SetKey; 24 hexadecimal digits, the form SetKey
    // takes.
    static const QString kDefaultKey;

    PasswordCipher() { SetKey(QString()); }
    // An empty key re-arms the default.
    void SetKey(const QString& key);
    QString Convert(const QString& text) const;

private:
    QByteArray key_;
};

}  // namespace orvo::host
