#include "devkit/core/Recording.h"

#include "devkit/core/CommandTable.h"
#include "devkit/core/Json.h"
#include "devkit/core/Session.h"

#include <algorithm>
#include <iterator>

namespace
{

constexpr const char* kFormatName = "veridan-recording";

struct EffectKind
{
    const char* member;
    Recording::Source source;
    bool named; // the member says of what, else the kind does
};

using Source = Recording::Source;
constexpr EffectKind kEffects[] = {
    {"set", Source::Variables, true},   {"trigger", Source::Variables, true}, {"write", Source::Store, true},
    {"remove", Source::Store, true},    {"constrain", Source::Store, true},   {"flyer", Source::Flyers, false},
    {"metric", Source::Metrics, false}, {"url", Source::Urls, false},         {"log", Source::Log, true},
    {"result", Source::Answers, false}, {"error", Source::Answers, false},
};

const EffectKind* KindOf(const QVariantMap& line)
{
    const auto* const found = std::find_if(std::begin(kEffects), std::end(kEffects), [&line](const EffectKind& kind) {
        return line.contains(QLatin1String(kind.member));
    });
    return found == std::end(kEffects) ? nullptr : found;
}

/// "@A:*": of wildcards there is the one for any text.
QRegularExpression Names(const QString& pattern)
{
    QString expression = QRegularExpression::escape(pattern).replace(QLatin1String("\\*"), QLatin1String(".*"));
    return QRegularExpression(QRegularExpression::anchoredPattern(expression));
}

std::vector<QRegularExpression> NameList(const QVariant& json)
{
    std::vector<QRegularExpression> names;
    for (const QString& pattern : json.toStringList())
        names.push_back(Names(pattern));
    return names;
}

/// Why a head is none that this program can follow, else empty.
QString CheckHead(const QVariantMap& head)
{
    const QVariantMap own = Recording::Format();
    const QString protocol = QStringLiteral("protocol");
    const QString format = QStringLiteral("format");
    if (head.value(format) != own.value(format))
        return QStringLiteral("this is not the head of a recording");
    if (head.value(protocol).toInt() < 1)
        return QStringLiteral("the head names no protocol");
    if (head.value(protocol).toInt() > own.value(protocol).toInt())
    {
        return QStringLiteral("the recording was made with protocol %1 (version %2); this host speaks protocol %3")
            .arg(head.value(protocol).toString(), head.value(QStringLiteral("version")).toString(),
                 own.value(protocol).toString());
    }
    return {};
}

QString AtLine(int number, const QString& what)
{
    return QStringLiteral("line %1: %2").arg(number).arg(what);
}

/// Why a line after the head is none of a recording, else empty.
QString CheckLine(const QVariantMap& line, const CommandTable& commands)
{
    if (!line.contains(Recording::kRequest))
        return KindOf(line) ? QString() : QStringLiteral("it is neither a request nor something that a plug-in does");
    return commands.Find(line.value(Recording::kRequest).toMap()).error;
}

} // namespace

QVariantMap Recording::Format()
{
    QVariantMap format = Session::Greeting();
    format.insert(QStringLiteral("format"), QLatin1String(kFormatName));
    return format;
}

QString Recording::NameOf(const QVariantMap& effect)
{
    const EffectKind* const kind = KindOf(effect);
    const QString member = QLatin1String(kind->member);
    return kind->named ? effect.value(member).toString() : member;
}

Recording::Source Recording::SourceOf(const QVariantMap& effect)
{
    return effect.contains(kBackground) ? Source::Background : KindOf(effect)->source;
}

Result<Recording> Recording::Read(const QByteArray& text, const CommandTable& commands)
{
    Recording recording;
    int number = 0;
    bool ended = false;
    const auto damaged = [&number](const QString& why) { return Result<Recording>::Failure(AtLine(number, why)); };
    QList<QByteArray> lines = text.split('\n');
    const bool whole = lines.last().isEmpty();
    if (whole)
        lines.removeLast();
    for (const QByteArray& line : lines)
    {
        ++number;
        if (ended)
            return damaged(QStringLiteral("the recording goes on after its end"));
        if (number == lines.size() && !whole)
            break; // cut in the middle of the line
        const Json::Parsed parsed = Json::Parse(line);
        const QVariantMap members = parsed.value.toMap();
        if (!parsed.error.isEmpty())
            return damaged(QString(parsed.error).remove(QLatin1String("line 1, ")));
        if (number > 1 && members.contains(kEnd))
        {
            ended = true;
            continue;
        }
        const QString why = number == 1 ? CheckHead(members) : CheckLine(members, commands);
        if (!why.isEmpty())
            return damaged(why);
        const bool isEffect = number > 1 && !members.contains(kRequest);
        if (isEffect)
            recording.steps.back().effects.push_back({number, members});
        else
            recording.steps.push_back({{number, members}, {}});
    }
    if (recording.steps.empty())
        return Result<Recording>::Failure(AtLine(1, QStringLiteral("there is no whole line")));
    const Result<LeftOut> leftOut = LeftOut::FromHead(recording.steps.front().request.members.value(kLeftOut));
    if (!leftOut.Ok())
        return Result<Recording>::Failure(AtLine(1, leftOut.error));
    recording.leftOut = leftOut.value;
    if (!whole)
        recording.cut = AtLine(number, QStringLiteral("the recording is cut in the middle of a line"));
    else if (!ended)
        recording.cut = AtLine(number + 1, QStringLiteral("the recording ends here without its end line"));
    return {recording, {}};
}

Result<Recording::LeftOut> Recording::LeftOut::FromHead(const QVariant& json)
{
    const QVariantMap members = json.toMap();
    LeftOut leftOut;
    leftOut.m_lines = NameList(members.value(QStringLiteral("lines")));
    leftOut.m_values = NameList(members.value(QStringLiteral("values")));
    const QVariantMap parts = members.value(QStringLiteral("parts")).toMap();
    for (auto it = parts.begin(); it != parts.end(); ++it)
    {
        const QRegularExpression part(it.value().toString());
        if (!part.isValid())
            return Result<LeftOut>::Failure(QStringLiteral("what to leave out of \"%1\" is no regular expression: %2")
                                                .arg(it.key(), part.errorString()));
        leftOut.m_parts.emplace_back(Names(it.key()), part);
    }
    return {leftOut, {}};
}

bool Recording::LeftOut::Matches(const std::vector<QRegularExpression>& names, const QVariantMap& effect)
{
    return std::any_of(
        names.begin(), names.end(),
        [name = NameOf(effect)](const QRegularExpression& pattern) { return pattern.match(name).hasMatch(); });
}

QByteArray Recording::LeftOut::Compared(const QVariantMap& effect) const
{
    QVariantMap compared = effect;
    compared.remove(QStringLiteral("ms"));
    compared.remove(kBackground);
    const QString name = NameOf(effect);
    const QString value = KindOf(effect)->named ? QStringLiteral("value") : name;
    if (!compared.contains(value))
        return Json::Write(compared);
    if (Matches(m_values, effect))
        compared[value] = QVariant();
    QString text = QString::fromUtf8(Json::Write(compared.value(value)));
    bool changed = false;
    for (const auto& [names, part] : m_parts)
    {
        if (names.match(name).hasMatch())
        {
            text.remove(part);
            changed = true;
        }
    }
    if (changed)
        compared[value] = text;
    return Json::Write(compared);
}
