#include "tests/scenarios/Strata.h"

#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

QString Strata::Run(const QStringList& arguments) const
{
    ChildProcess process;
    process.start(QCoreApplication::applicationDirPath() + "/strata", QStringList{"--data", m_dataFolder} + arguments);
    EXPECT_TRUE(process.waitForFinished(30'000)) << qUtf8Printable(arguments.join(' '));
    EXPECT_EQ(0, process.exitCode()) << process.readAllStandardError().constData();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}
