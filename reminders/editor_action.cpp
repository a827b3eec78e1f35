#include "reminders/editor_action.h"

#include <QLoggingCategory>

#include "component/public/component_error.h"
#include "platform/db/database_error.h"
#include "platform/prompts.h"

Q_LOGGING_CATEGORY(lcReminderEditors, "orvo.reminders.editors")

namespace orvo::reminders {

bool RunEditorAction(const std::function<void()>& action) {
    try {
        action();
        return true;
    } catch (const db::DatabaseError& error) {
        qCWarning(lcReminderEditors).noquote() << error.describe();
        prompts().Message(error.describe(), Buttons::Ok, Icon::Critical,
                          QStringLiteral("Database Error"));
    } catch (const NotImplemented& error) {
        qCWarning(lcReminderEditors) << error.what();
        prompts().Message(QString::fromUtf8(error.what()), Buttons::Ok, Icon::Critical,
                          QStringLiteral("Not Available"));
    }
    return false;
}

}  // namespace orvo::reminders
