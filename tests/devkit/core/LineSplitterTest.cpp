#include "devkit/core/LineSplitter.h"

#include <gmock/gmock.h>

#include <QList>

#include <vector>

using testing::ElementsAre;

namespace
{

std::vector<QByteArray> Split(const QList<QByteArray>& pieces)
{
    constexpr int kLimit = 5;
    LineSplitter splitter(kLimit);
    for (const QByteArray& piece : pieces)
        splitter.Feed(piece);
    splitter.Finish();
    std::vector<QByteArray> lines;
    for (auto line = splitter.Take(); line; line = splitter.Take())
        lines.push_back(line->tooLong ? QByteArray("(too long)") : line->text);
    return lines;
}

TEST(LineSplitterTest, LinesAreTheSameHoweverTheStreamIsCut)
{
    const QByteArray stream("one\ntwo\r\n\nfive5\r\nsixsix\n\rx\nlast");
    const auto expected = ElementsAre("one", "two", "", "five5", "(too long)", "\rx", "last");
    EXPECT_THAT(Split({stream}), expected);
    QList<QByteArray> bytes;
    for (const char byte : stream)
        bytes.append(QByteArray(1, byte));
    EXPECT_THAT(Split(bytes), expected);
}

TEST(LineSplitterTest, LineThatIsTooLongIsReportedOnceAndSkippedToItsEnd)
{
    EXPECT_THAT(Split({"123456", "789", "\nnext\n"}), ElementsAre("(too long)", "next"));
    EXPECT_THAT(Split({"ok\n123456"}), ElementsAre("ok", "(too long)"));
    EXPECT_THAT(Split({"12345\r\n", "123456\n"}), ElementsAre("12345", "(too long)"));
    EXPECT_THAT(Split({"ok\n"}), ElementsAre("ok"));
}

} // namespace
