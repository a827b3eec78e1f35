#include "reminders/template_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>

#include "reminders/merge_variables.h"
#include "reminders/reminder_codes.h"

namespace orvo::reminders {
namespace {

const QString kParametersFile = QStringLiteral("Parameters.ini");
const QString kTemplateSection = QStringLiteral("ORVO EMAIL TEMPLATE");
constexpr int kIniBuffer = 2048;

// Paths in setup files and tags are written with backslashes; this system keeps its own.
QString LocalPath(QString path) {
    return path.replace(u'\\', u'/');
}

}  // namespace

bool IsTemplateReference(const QString& body) {
    return body.trimmed().contains(kPredefinedTemplateTag);
}

QString TemplateFileName(const QString& body) {
    const qsizetype start = body.indexOf(kPredefinedTemplateTag);
    if (start < 0)
        return {};
    const qsizetype end = body.indexOf(u'>', start);
    const QString tag = end < 0 ? body.mid(start) : body.mid(start, end - start);
    return tag.split(u'"').value(1);
}

QString TemplateTag(const QString& fileName) {
    return kPredefinedTemplateTag + u'"' + fileName + u'"' + QStringLiteral("/>");
}

QString TemplateTypeFolder(const QString& dataPath, int type) {
    QString sub;
    switch (type) {
        case kRecallReminder:
            sub = QStringLiteral("RecallReminder/");
            break;
        case kAppointmentConfirmation:
            sub = QStringLiteral("AppointmentConfirmation/");
            break;
        case kAppointmentReminder:
            sub = QStringLiteral("AppointmentReminder/");
            break;
        case kBirthdayReminder:
            sub = QStringLiteral("BirthdayReminder/");
            break;
        case kNewsLetter:
            sub = QStringLiteral("Newsletter/");
            break;
        default:
            return {};
    }
    return dataPath + QStringLiteral("STP/Templates/") + sub;
}

QString ReadIniValue(const QString& path, const QString& section, const QString& key) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    auto decoder = QStringDecoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(file.readAll());
    bool inSection = false;
    for (QString line : text.split(u'\n')) {
        line = line.trimmed();
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            inSection =
                line.mid(1, line.size() - 2).trimmed().compare(section, Qt::CaseInsensitive) == 0;
            continue;
        }
        if (!inSection || line.startsWith(u';'))
            continue;
        const qsizetype equals = line.indexOf(u'=');
        if (equals < 0 || line.left(equals).trimmed().compare(key, Qt::CaseInsensitive) != 0)
            continue;
        QString value = line.mid(equals + 1).trimmed();
        if (value.size() >= 2 && (value.startsWith(u'"') && value.endsWith(u'"')))
            value = value.mid(1, value.size() - 2);
        return value.left(kIniBuffer - 1);
    }
    return {};
}

QList<TemplateEntry> ListTemplates(const QString& dataPath, int type) {
    const QString typeFolder = TemplateTypeFolder(dataPath, type);
    QList<TemplateEntry> templates;
    if (typeFolder.isEmpty())
        return templates;
    const QDir dir(typeFolder);
    for (const QString& name : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QString folder = typeFolder + name + u'/';
        const QString parameters = folder + kParametersFile;
        const QString file = ReadIniValue(parameters, kTemplateSection, QStringLiteral("File"));
        const QString title = ReadIniValue(parameters, kTemplateSection, QStringLiteral("Title"));
        if (file.isEmpty() || title.isEmpty())
            continue;
        const QString path = QDir::cleanPath(folder + LocalPath(file));
        if (!QFileInfo(path).isFile())
            continue;
        templates << TemplateEntry{folder, path, title};
    }
    return templates;
}

int FindTemplate(const QList<TemplateEntry>& templates, const QString& fileName) {
    const QString wanted = LocalPath(fileName).trimmed();
    if (wanted.isEmpty())
        return -1;
    for (int i = 0; i < templates.size(); ++i) {
        const QString& path = templates[i].file;
        if (path.endsWith(wanted, Qt::CaseInsensitive) ||
            wanted.endsWith(path, Qt::CaseInsensitive)) {
            return i;
        }
    }
    return -1;
}

QString ReadTemplateText(const QString& path) {
    QFile file(LocalPath(path));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    // Template files come as UTF-8, or in the Windows code page of the station that made them.
    auto utf8 = QStringDecoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (utf8.hasError())
        text = QString::fromLatin1(bytes);
    return ReplaceOldVariableNames(text);
}

QSize TemplateSizeHint(const QString& html) {
    QSize size(-1, -1);
    const qsizetype marker = html.indexOf(QStringLiteral("<!--{SIZE}"));
    if (marker < 0)
        return size;
    const qsizetype end = html.indexOf(QStringLiteral("-->"), marker);
    const QString comment = end < 0 ? html.mid(marker) : html.mid(marker, end - marker);
    static const QRegularExpression width(QStringLiteral("Width=\"\\s*(-?\\d+)\\s*\""),
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression height(QStringLiteral("Height=\"\\s*(-?\\d+)\\s*\""),
                                           QRegularExpression::CaseInsensitiveOption);
    if (const auto m = width.match(comment); m.hasMatch() && m.captured(1).toInt() > 0)
        size.setWidth(m.captured(1).toInt());
    if (const auto m = height.match(comment); m.hasMatch() && m.captured(1).toInt() > 0)
        size.setHeight(m.captured(1).toInt());
    return size;
}

QString ResolveImagesForPreview(QString text, const QString& templateFolder) {
    QString folder = LocalPath(templateFolder);
    if (!folder.endsWith(u'/'))
        folder += u'/';
    // The rest of each image path was written with backslashes too.
    QString resolved;
    qsizetype from = 0;
    for (qsizetype at; (at = text.indexOf(kImagePathVariable, from)) >= 0;) {
        resolved += text.mid(from, at - from) + folder;
        qsizetype end = at + kImagePathVariable.size();
        while (end < text.size() && !QStringLiteral("\"'>) \t\r\n").contains(text[end]))
            ++end;
        resolved += LocalPath(
            text.mid(at + kImagePathVariable.size(), end - at - kImagePathVariable.size()));
        from = end;
    }
    return resolved + text.mid(from);
}

QString ResolveImagesForSending(QString text, const QString& relativeFolder) {
    QString folder = QStringLiteral("Templates\\") + relativeFolder;
    if (!folder.endsWith(u'\\') && !folder.endsWith(u'/'))
        folder += u'\\';
    text.replace(kImagePathVariable, folder);
    return text.replace(u'\\', u'/');
}

QString OldTemplateFileName(int type, const QString& body) {
    static const QRegularExpression old(
        QStringLiteral("^TEMPLATE (.*)$"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    const auto match = old.match(body);
    if (!match.hasMatch())
        return {};
    QString code;
    switch (type) {
        case kRecallReminder:
            code = QStringLiteral("RCR");
            break;
        case kAppointmentConfirmation:
            code = QStringLiteral("APC");
            break;
        case kAppointmentReminder:
            code = QStringLiteral("APR");
            break;
        case kBirthdayReminder:
            code = QStringLiteral("BDR");
            break;
        default:
            return {};
    }
    return code + match.captured(1) + QStringLiteral(".TPL");
}

const QStringList& EditableDocumentEndings() {
    static const QStringList endings{
        QStringLiteral(".TXT"), QStringLiteral(".HTML"), QStringLiteral(".HTM"),
        QStringLiteral(".DOC"), QStringLiteral(".DOCX"), QStringLiteral(".RTF"),
        QStringLiteral(".MGW"), QStringLiteral(".XML"),  QStringLiteral(".CSS")};
    return endings;
}

QString DocumentOpenFilter() {
    return QStringLiteral("RTF Files (*.rtf)|*.rtf") +
           QStringLiteral("|Microsoft Word Documents (*.doc, *.docx)|*.doc;*.docx") +
           QStringLiteral("|Text Files (*.txt)|*.txt") +
           QStringLiteral("|HTML Files |*.html;*.htm");
}

}  // namespace orvo::reminders
