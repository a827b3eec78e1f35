#pragma once

#include <QString>

namespace orvo::reminders {

// The line break of message bodies.
inline const QString kLineBreak = QStringLiteral("\r\n");

// The built-in body of a reminder type for a channel, in English or, for voice in language 2,
// Spanish. With confirmOnly set it is the confirmation line of a voice confirmation alone.
QString GetDefaultMessage(int type, int channel, bool confirmOnly, int language);

// The instruction to confirm an appointment: the dial line for voice; else nothing past the
// last stage (or with no stage at all), a link for a text message, a sentence with a link for
// the other channels. confirmationAddress is the suite's confirmation page without the
// appointment ("https://.../c.aspx?a=").
QString GetConfirmText(int lastStage, int stage, int channel, int language,
                       const QString& confirmationAddress);

// Puts the confirmation into a body: after it on a new line for text and voice, before
// "</body>" followed by "<br>" for e-mail; other channels take none.
QString AddConfirmation(const QString& body, const QString& confirmation, int channel);

}  // namespace orvo::reminders
