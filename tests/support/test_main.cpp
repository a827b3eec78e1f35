// The main of every test program: widgets need an application object, and the tests run on
// the offscreen platform unless told otherwise.
#include <gtest/gtest.h>
#include <QApplication>
#include <cstring>

namespace {

QtMessageHandler previousHandler = nullptr;

// The database layer reports a broken promise of its own (a statement filled from its shape
// otherwise than translated whole) as critical: in a test that is a failure of the test.
void FailOnDatabaseCritical(QtMsgType type, const QMessageLogContext& context,
                            const QString& message) {
    if (type == QtCriticalMsg && context.category && std::strcmp(context.category, "orvo.db") == 0)
        ADD_FAILURE() << message.toStdString();
    previousHandler(type, context, message);
}

}  // namespace

int main(int argc, char** argv) {
    previousHandler = qInstallMessageHandler(FailOnDatabaseCritical);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
