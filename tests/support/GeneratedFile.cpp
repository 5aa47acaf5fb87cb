#include "tests/support/GeneratedFile.h"

#include <gtest/gtest.h>

#include <QFile>

void ExpectGeneratedFile(const QString& path, const QByteArray& text)
{
    QFile file(path);
    if (qEnvironmentVariableIsSet("VERIDAN_UPDATE_FILES"))
    {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
        ASSERT_EQ(text.size(), file.write(text));
        return;
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    EXPECT_EQ(text.toStdString(), file.readAll().toStdString())
        << path.toStdString() << " is not up to date; run this test with VERIDAN_UPDATE_FILES=1";
}
