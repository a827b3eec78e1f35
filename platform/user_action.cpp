#include "platform/user_action.h"

#include <QLoggingCategory>
#include <exception>

#include "platform/db/database_error.h"
#include "platform/file_error.h"
#include "platform/prompts.h"

namespace orvo {
namespace {

Q_LOGGING_CATEGORY(lcAction, "orvo.action")

void Report(const QString& title, const QString& shown, const QString& logged) {
    qCWarning(lcAction).noquote() << title << ":" << logged;
    prompts().Message(shown, Buttons::Ok, Icon::Critical, title);
}

}  // namespace

bool RunUserAction(const QString& title, const std::function<void()>& action) {
    try {
        action();
        return true;
    } catch (const db::RowNotFoundError& error) {
        // The person can do something about this one; the statement is for the log.
        Report(title, error.driverMessage(), error.describe());
    } catch (const db::DatabaseError& error) {
        Report(title, error.describe(), error.describe());
    } catch (const FileError& error) {
        Report(title, error.describe(), error.describe());
    } catch (const std::exception& error) {
        const QString what = QString::fromUtf8(error.what());
        Report(title, what, what);
    } catch (...) {
        const QString what = QStringLiteral("An unexpected error ended this action.");
        Report(title, what, what);
    }
    return false;
}

}  // namespace orvo
