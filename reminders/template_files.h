#pragma once

#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>

namespace orvo::reminders {

// A body that uses a template file holds this tag in place of its text.
inline const QString kPredefinedTemplateTag = QStringLiteral("<PredefinedTemplate=");

// Whether a body refers to a template file: its trimmed text holds the tag anywhere.
bool IsTemplateReference(const QString& body);
// The file a tag names: the piece between the first two double quotes from the tag to its ">";
// empty when there is none.
QString TemplateFileName(const QString& body);
// The tag that refers to a template file.
QString TemplateTag(const QString& fileName);

// The folder of a reminder type's templates under the data folder, ending with a separator;
// empty for a type that has none.
QString TemplateTypeFolder(const QString& dataPath, int type);

// One template of a type folder: a sub-folder whose "Parameters.ini" names an HTML file that
// exists and a title.
struct TemplateEntry {
    QString folder;  // the sub-folder, ending with a separator
    QString file;    // the HTML file, absolute
    QString title;
};
// The templates of a type, by sub-folder name; a sub-folder that names a missing file or no
// title is left out.
QList<TemplateEntry> ListTemplates(const QString& dataPath, int type);
// The row of the list whose file the body's tag names, comparing the ends of the paths without
// regard to case; -1 when none.
int FindTemplate(const QList<TemplateEntry>& templates, const QString& fileName);

// One value of an INI file, read as the suite's setup files are: the section and key in any
// case, the value trimmed and cut to the 2048 characters of the reading buffer; empty when the
// file, section or key is missing.
QString ReadIniValue(const QString& path, const QString& section, const QString& key);

// A template file read whole, with the old variable names brought up to date; empty when the
// file is missing.
QString ReadTemplateText(const QString& path);

// The preview size an HTML template asks for in a "<!--{SIZE} Width=".." Height=".." -->"
// comment; a dimension not above 0 stays invalid (-1).
QSize TemplateSizeHint(const QString& html);

// "{ImagePath}" of a template's text, made the sub-folder for a preview on this station, or
// the suite's public "Templates" folder and the part relative to the templates root, with
// forward slashes, for a body to be sent.
QString ResolveImagesForPreview(QString text, const QString& templateFolder);
QString ResolveImagesForSending(QString text, const QString& relativeFolder);

// An old body "TEMPLATE rest" (any case) names the file of its type's code, the rest and
// ".TPL": "RCR7.TPL" for template 7 of a recall. Empty when the body is not of that form or
// the type has no code.
QString OldTemplateFileName(int type, const QString& body);

// The document endings that the suite edits as messages, and the filter of the open dialog.
const QStringList& EditableDocumentEndings();
QString DocumentOpenFilter();

}  // namespace orvo::reminders
