#include "host/password_cipher.h"

#include <QCryptographicHash>
#include <QRegularExpression>

namespace orvo::host {

const QString PasswordCipher::kDefaultKey = QStringLiteral("5A3C91E07B4D28F6C1A9E352");

namespace {

// Marks the stored form of a password, so that Convert can tell which way to go.
const QString kCipherMarker = QStringLiteral("ORVO1$");

QByteArray Keystream(const QByteArray& key, qsizetype length) {
    QByteArray stream;
    for (quint32 counter = 0; stream.size() < length; ++counter) {
        QByteArray block = key;
        for (int shift = 24; shift >= 0; shift -= 8)
            block.append(char((counter >> shift) & 0xff));
        stream += QCryptographicHash::hash(block, QCryptographicHash::Sha256);
    }
    stream.truncate(length);
    return stream;
}

QByteArray XorWith(QByteArray data, const QByteArray& key) {
    const QByteArray stream = Keystream(key, data.size());
    for (qsizetype i = 0; i < data.size(); ++i)
        data[i] = char(data[i] ^ stream[i]);
    return data;
}

bool IsStoredPassword(const QString& text) {
    static const QRegularExpression hex(QStringLiteral("^([0-9A-Fa-f]{2})+$"));
    return text.startsWith(kCipherMarker) &&
           hex.match(QStringView(text).mid(kCipherMarker.size())).hasMatch();
}

}  // namespace

void PasswordCipher::SetKey(const QString& key) {
    key_ = (key.isEmpty() ? kDefaultKey : key).toUtf8();
}

QString PasswordCipher::Convert(const QString& text) const {
    if (text.isEmpty())
        return QString();
    if (IsStoredPassword(text)) {
        const QByteArray cipher = QByteArray::fromHex(text.mid(kCipherMarker.size()).toLatin1());
        return QString::fromUtf8(XorWith(cipher, key_));
    }
    return kCipherMarker + QString::fromLatin1(XorWith(text.toUtf8(), key_).toHex());
}

}  // namespace orvo::host
