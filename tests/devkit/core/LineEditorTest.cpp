#include "devkit/terminal/LineEditor.h"

#include <gtest/gtest.h>

namespace
{

constexpr const char* kUp = "\x1b[A";
constexpr const char* kDown = "\x1b[B";
constexpr const char* kRight = "\x1b[C";
constexpr const char* kLeft = "\x1bOD";
constexpr const char* kHome = "\x1b[H";
constexpr const char* kDelete = "\x1b[3~";

QString TypedOnce(const QByteArray& keys)
{
    return LineEditor().Feed(keys).value(0, QStringLiteral("(nothing)"));
}

TEST(LineEditorTest, KeysEditTheLineAtTheCursor)
{
    EXPECT_EQ(TypedOnce("abc\x7f\r"), "ab");
    EXPECT_EQ(TypedOnce(QByteArray("bc") + kHome + "a\n"), "abc");
    EXPECT_EQ(TypedOnce(QByteArray("abx") + kLeft + kDelete + "c\r"), "abc");
    EXPECT_EQ(TypedOnce(QByteArray("ac") + kLeft + kLeft + kLeft + kRight + "b\r"), "abc");
    EXPECT_EQ(TypedOnce("set one two\x17three\r"), "set one three");
    EXPECT_EQ(TypedOnce("set one two \x17three\r"), "set one three");
    EXPECT_EQ(TypedOnce("gone\x15kept\r"), "kept");
    EXPECT_EQ(TypedOnce("kept gone\x01\x1b[C\x1b[C\x1b[C\x1b[C\x0b\r"), "kept");
    EXPECT_EQ(TypedOnce("\x7f\x7f\x1b[Dx\x1b[15~\x1bq\r"), "x");
}

TEST(LineEditorTest, BytesOfOneCharacterMayArriveApart)
{
    LineEditor editor;
    EXPECT_TRUE(editor.Feed("\xe2\x82").isEmpty());
    EXPECT_EQ(editor.Feed("\xac\r").value(0), QString(QChar(0x20AC)));
}

TEST(LineEditorTest, CharacterIsWhatAReaderTakesForOne)
{
    const QByteArray smile("\xf0\x9f\x98\x80");
    const QByteArray accented("e\xcc\x81");
    EXPECT_EQ(TypedOnce("a" + smile + accented + "\x7f\x7f\r"), "a");
    EXPECT_EQ(TypedOnce(smile + accented + kLeft + kLeft + kDelete + "\r"), QString::fromUtf8(accented));
    LineEditor editor;
    editor.Feed("a" + smile + accented + "\xe6\xbc\xa2");
    EXPECT_EQ(editor.Draw("> ", 80),
              LineEditor::Clear() + QString::fromUtf8("> a" + smile + accented + "\xe6\xbc\xa2"));
    editor.Feed(kHome);
    EXPECT_TRUE(editor.Draw("> ", 80).endsWith("\x1b[6D"));
    EXPECT_EQ(editor.Draw("> ", 7), LineEditor::Clear() + QString::fromUtf8("> a" + smile + accented) + "\x1b[4D");
}

TEST(LineEditorTest, HistoryIsWalkedBothWays)
{
    LineEditor editor;
    editor.Feed("first\rsecond\r\r");
    EXPECT_EQ(editor.Feed(QByteArray(kUp) + kUp + kUp + "!\r").value(0), "first!");
    EXPECT_EQ(editor.Feed(QByteArray(kUp) + kUp + kDown + "\r").value(0), "first!");
    EXPECT_EQ(editor.Feed(QByteArray(kUp) + kDown + "new\r").value(0), "new");
}

TEST(LineEditorTest, EndOfInputIsAnEmptyLinesOnly)
{
    LineEditor editor;
    editor.Feed("a\x04");
    EXPECT_FALSE(editor.HasEnded());
    editor.Feed("\x7f\x04");
    EXPECT_TRUE(editor.HasEnded());
}

TEST(LineEditorTest, LineThatIsTooLongShowsThePartAroundTheCursor)
{
    LineEditor editor;
    editor.Feed("0123456789");
    EXPECT_EQ(editor.Draw("> ", 8), LineEditor::Clear() + "> 56789");
    editor.Feed(kHome);
    EXPECT_EQ(editor.Draw("> ", 8), LineEditor::Clear() + "> 01234\x1b[5D");
    EXPECT_EQ(editor.Draw("> ", 80), LineEditor::Clear() + "> 0123456789\x1b[10D");
}

} // namespace
