#include "reminders/editor_action.h"

#include <QLoggingCategory>

#include "component/public/component_error.h"
#include "platform/db/database_error.h"
#include "platform/prompts.h"
#include "reminders/reminders_log.h"

namespace orvo::reminders {

bool RunEditorAction(const std::function<void()>& action) {
    try {
        action();
        return true;
    } catch (const db::DatabaseError& error) {
        qCWarning(lcReminders).noquote() << error.describe();
        prompts().Message(error.describe(), Buttons::Ok, Icon::Critical,
                          QStringLiteral("Database Error"));
    } catch (const NotImplemented& error) {
        qCWarning(lcReminders) << error.what();
        prompts().Message(QString::fromUtf8(error.what()), Buttons::Ok, Icon::Critical,
                          QStringLiteral("Not Available"));
    }
    return false;
}

}  // namespace orvo::reminders
