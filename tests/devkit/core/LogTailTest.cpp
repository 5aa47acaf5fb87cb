#include "devkit/core/LogTail.h"

#include <gtest/gtest.h>

#include <QTemporaryFile>
#include <QtEndian>

namespace
{

class LogTailTest : public testing::Test
{
protected:
    void Write(const QString& text)
    {
        QByteArray bytes("\xff\xfe");
        for (const QChar unit : text)
            bytes.append(static_cast<char>(unit.unicode() & 0xFF)).append(static_cast<char>(unit.unicode() >> 8));
        ASSERT_TRUE(m_file.open());
        ASSERT_EQ(m_file.write(bytes), bytes.size());
        m_file.close();
    }

    QStringList Read(qint64 count, int level) const { return ReadLogTail(m_file.fileName(), count, level); }

    static QString Line(const char* tag, const QString& text)
    {
        return QStringLiteral("2024-03-05 14:07:09.120 [1a2c.0f3c] %1: %2").arg(QLatin1String(tag), text);
    }

private:
    QTemporaryFile m_file;
};

TEST_F(LogTailTest, LevelKeepsWholeMessagesOfThatLevelOrMoreUrgentOnes)
{
    const QString fatal = Line("*F", "one\r\n  goes on");
    const QString warning = Line(".W", "two");
    const QString info = Line(" I", "three\r\n2024 is not the begin of a line");
    Write("\r\n" + fatal + "\r\n" + info + "\r\n" + warning + "\r\n");
    EXPECT_EQ(Read(50, 3), fatal.split("\r\n") + QStringList{warning});
    EXPECT_EQ(Read(2, 3), (QStringList{"  goes on", warning}));
    EXPECT_EQ(Read(50, 0).size(), 6);
}

TEST_F(LogTailTest, LinesAreFoundFarFromTheEnd)
{
    const QString early = Line("*E", "early");
    QString text = early + "\r\n";
    for (int i = 0; i < 3000; ++i)
        text += Line(" D", QString(200, 'x')) + "\r\n";
    Write(text);
    EXPECT_EQ(Read(50, 2), QStringList{early});
    EXPECT_EQ(Read(5, 0).size(), 5);
    EXPECT_TRUE(ReadLogTail("/nowhere/at/all.log", 5, 0).isEmpty());
}

} // namespace
