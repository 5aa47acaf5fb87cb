#include "tests/support/LogCapture.h"
#include "tests/support/ThreadSanitizer.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

namespace
{

/// Qt warns of misuse only by a message, so such a message fails the test.
void OnQtMessage(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
    {
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
        return;
    }
    ADD_FAILURE() << "Qt: " << qUtf8Printable(message);
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    qInstallMessageHandler(OnQtMessage);
    QCoreApplication application(argc, argv);
    LogCapture::Install();
    return RUN_ALL_TESTS();
}
