// What the host reads from its standard input: bytes to lines, lines to JSON, and JSON to values of the store.

#include "devkit/core/Json.h"
#include "devkit/core/LineSplitter.h"
#include "devkit/core/StoreEntry.h"
#include "devkit/strata/Object.h"
#include "fuzz/Target.h"

#include <algorithm>
#include <vector>

namespace
{

constexpr int kLongestLine = 2048;

std::vector<LineSplitter::Line> Lines(const QByteArray& bytes, int pieceSize)
{
    LineSplitter splitter(kLongestLine);
    for (int at = 0; at < bytes.size(); at += pieceSize)
        splitter.Feed(bytes.mid(at, pieceSize));
    splitter.Finish();
    std::vector<LineSplitter::Line> lines;
    while (auto line = splitter.Take())
    {
        Require(line->text.size() <= kLongestLine && !line->text.contains('\n'), "a line is one, and not too long");
        lines.push_back(*line);
    }
    return lines;
}

void RequireSameLines(const std::vector<LineSplitter::Line>& lines, const std::vector<LineSplitter::Line>& others)
{
    Require(std::equal(
                lines.begin(), lines.end(), others.begin(), others.end(),
                [](const auto& left, const auto& right) {
                    return left.text == right.text && left.tooLong == right.tooLong;
                }),
            "lines do not depend on the pieces in which they come");
}

/// A value that the host takes for the store is one for the store, too, and comes back the same.
void RequireStorable(const QVariant& value, const QByteArray& text)
{
    for (const char* const type : {"bool", "int32", "int64", "string", "utf8", "object"})
    {
        const auto made = StoreEntry::Make(QLatin1String(type), value);
        if (!made.Ok())
            continue;
        const EntriesForC written({{QStringLiteral("key"), made.value}});
        const OrbStrataEntry& entry = *written.Data();
        Require(Json::Write(StoreEntry::FromC(entry).value) == text, "a value comes back from the store as it was");
        Require(entry.type != ORB_STRATA_TYPE_OBJECT || Strata::ParseObject(entry.text) != nullptr,
                "the store reads the objects that the host makes");
    }
}

void ReadLine(const QByteArray& line)
{
    const Json::Parsed parsed = Json::Parse(line);
    if (!parsed.error.isEmpty())
    {
        Require(!parsed.value.isValid() &&
                    (parsed.error.startsWith(QLatin1String("line ")) || parsed.error.endsWith(QLatin1String(" deep"))),
                "a refusal tells where, and gives nothing");
        return;
    }
    const QByteArray text = Json::Write(parsed.value);
    Require(!text.contains('\n'), "a value is written on one line");
    const Json::Parsed again = Json::Parse(text);
    Require(again.error.isEmpty() && again.value == parsed.value, "a value that is written is read as it was");
    Require(Json::Write(again.value) == text, "and has one text");
    RequireStorable(parsed.value, text);
}

const Target kTarget("json_lines", [](std::string_view input) {
    const QByteArray bytes(input.data(), static_cast<int>(input.size()));
    const auto lines = Lines(bytes, std::max(bytes.size(), 1));
    RequireSameLines(lines, Lines(bytes, 1));
    for (const LineSplitter::Line& line : lines)
        ReadLine(line.text);
});

} // namespace
