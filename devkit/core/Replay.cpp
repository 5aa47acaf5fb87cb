#include "devkit/core/Replay.h"

#include "devkit/core/EventLoop.h"
#include "devkit/core/Host.h"
#include "devkit/core/Json.h"
#include "devkit/core/Recorder.h"
#include "devkit/core/Session.h"

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <limits>
#include <utility>

namespace
{

constexpr int kMostDifferences = 5;
constexpr qint64 kPatienceMs = 2000;           // beyond the time that it took when it was recorded
constexpr qint64 kBackgroundPatienceMs = 6000; // of a thread that looks every few seconds

QVariantMap RequestOf(const Recording::Line& line)
{
    return line.members.value(Recording::kRequest).toMap();
}

QString OpOf(const Recording::Line& line)
{
    return RequestOf(line).value(QStringLiteral("op")).toString();
}

QString PlaceOf(const QVariantMap& write)
{
    return write.value(QStringLiteral("scope")).toString() + QLatin1Char(' ') + Recording::NameOf(write);
}

bool IsWrite(const QVariantMap& effect)
{
    const Recording::Source source = Recording::SourceOf(effect);
    return source == Recording::Source::Store || source == Recording::Source::Background;
}

} // namespace

Replay::Replay(Host& host, Aim aim, QString file, Print print)
    : m_host(host), m_aim(aim), m_file(std::move(file)), m_print(std::move(print)),
      m_session(Session::Open(host, *this))
{}

Replay::~Replay()
{
    m_session->Close();
}

Replay::Outcome Replay::Run(const QByteArray& text)
{
    const Result<Recording> read = Recording::Read(text, m_session->Commands());
    if (!read.Ok())
    {
        m_print(QStringLiteral("%1: %2").arg(m_file, read.error));
        return Unusable;
    }
    m_recording = read.value;
    for (const Recording::Step& step : m_recording.steps)
        for (const Line& line : step.effects)
            if (Recording::SourceOf(line.members) == Recording::Source::Background)
                m_background.insert(PlaceOf(line.members));
    Prepare(Present().request.members);
    const auto add = [this](const QVariantMap& line) {
        m_renewed += Json::Write(line.contains(Recording::kRequest) ? Present().request.members : line) + '\n';
    };
    add(Present().request.members);
    auto recorder = std::make_unique<Recorder>(m_host, [this, &add](const QVariantMap& line) {
        add(line);
        OnEffect(line);
    });
    for (; m_step < m_recording.steps.size() && GoesOn(); ++m_step)
        CarryOut();
    if (GoesOn())
        CompareBackground();
    recorder.reset();
    add({{Recording::kEnd, true}});
    if (m_host.IsQuitting() || !m_recording.cut.isEmpty())
    {
        m_print(QStringLiteral("%1: %2").arg(m_file, m_host.IsQuitting() ? QStringLiteral("the replay was ended")
                                                                         : m_recording.cut));
    }
    return m_differences > 0 ? Differs : m_host.IsQuitting() || !m_recording.cut.isEmpty() ? Unusable : Same;
}

bool Replay::GoesOn() const
{
    return !m_host.IsQuitting() && (m_aim == Aim::Renew || m_differences < kMostDifferences);
}

/// Makes the host as the head says that the recorded one was.
void Replay::Prepare(const QVariantMap& head)
{
    Ask(QStringLiteral("elevation"),
        {{QStringLiteral("answer"), head.value(Recording::kElevation, QStringLiteral("accept"))}});
    Ask(QStringLiteral("watch"), {{QStringLiteral("topic"), QStringLiteral("elevation")}});
    const QVariantMap store = head.value(Recording::kStore).toMap();
    for (auto scope = store.begin(); scope != store.end(); ++scope)
        Ask(QStringLiteral("store.write"),
            {{QStringLiteral("scope"), scope.key()}, {QStringLiteral("entries"), scope.value()}});
    const QVariantMap variables = head.value(Recording::kVariables).toMap();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable)
        Ask(QStringLiteral("set"),
            {{QStringLiteral("name"), variable.key()}, {QStringLiteral("value"), variable.value()}});
    if (head.value(Recording::kLoaded).toBool())
        Ask(QStringLiteral("load"), {});
    Ask(QStringLiteral("settle"), {});
}

void Replay::Ask(const QString& op, const QVariantMap& arguments)
{
    QVariantMap request = arguments;
    request.insert(QStringLiteral("op"), op);
    Submit(request);
    Await([this] { return m_unanswered == 0; }, std::numeric_limits<qint64>::max());
}

void Replay::Submit(const QVariantMap& request)
{
    ++m_unanswered;
    m_session->Submit(request);
}

void Replay::CarryOut()
{
    m_came.clear();
    if (m_step > 0)
        Submit(RequestOf(Present().request));
    Await([this] { return m_unanswered == 0; }, std::numeric_limits<qint64>::max());
    qint64 patience = m_aim == Aim::Renew ? 0 : kPatienceMs;
    for (const Line& effect : Present().effects)
        patience += effect.members.value(QStringLiteral("ms")).toLongLong();
    Await([this] { return !IsBehind(); }, patience);
    Compare();
}

void Replay::Await(const std::function<bool()>& come, qint64 patienceMs) const
{
    constexpr int kSliceMs = 5;
    QElapsedTimer timer;
    timer.start();
    while (!come() && !m_host.IsQuitting() && timer.elapsed() < patienceMs)
        RunFor(kSliceMs);
}

void Replay::Receive(const QVariantMap& message)
{
    if (message.contains(QStringLiteral("ok")))
        --m_unanswered;
    else if (message.value(QStringLiteral("event")) == QLatin1String("elevation"))
        // What the plug-in did before is told first.
        QTimer::singleShot(
            0, &m_context, [this, prompt = message.value(QStringLiteral("prompt"))] { AnswerPrompt(prompt); });
}

/// The answer is the next request of the recording; where it is not, nobody answered.
void Replay::AnswerPrompt(const QVariant& prompt)
{
    const QString op = QStringLiteral("elevation.answer");
    QVariantMap request{{QStringLiteral("op"), op}, {QStringLiteral("accept"), false}};
    if (m_step + 1 < m_recording.steps.size() && OpOf(m_recording.steps[m_step + 1].request) == op)
    {
        Compare();
        m_came.clear();
        ++m_step;
        request = RequestOf(Present().request);
    }
    request.insert(QStringLiteral("prompt"), prompt);
    Submit(request);
}

void Replay::OnEffect(const QVariantMap& effect)
{
    if (effect.contains(Recording::kRequest) || m_recording.leftOut.Covers(effect))
        return;
    m_came.push_back({0, effect});
    if (Recording::SourceOf(effect) == Recording::Source::Background)
        m_background.insert(PlaceOf(effect));
    if (IsWrite(effect))
        m_lastWritten[PlaceOf(effect)] = m_came.back();
}

/// What another thread writes now and then is written when its time has come, or by the end of the plug-in before that.
bool Replay::IsOf(Recording::Source source, const Line& line) const
{
    return Recording::SourceOf(line.members) == source &&
           (source != Recording::Source::Store || m_background.count(PlaceOf(line.members)) == 0);
}

Replay::Lines Replay::Expected(Recording::Source source) const
{
    Lines lines;
    for (const Line& line : Present().effects)
        if (IsOf(source, line) && !m_recording.leftOut.Covers(line.members))
            lines.push_back(&line);
    return lines;
}

Replay::Lines Replay::Came(Recording::Source source) const
{
    Lines lines;
    for (const Line& line : m_came)
        if (IsOf(source, line))
            lines.push_back(&line);
    return lines;
}

bool Replay::IsBehind() const
{
    return std::any_of(
        std::begin(Recording::kSources), std::end(Recording::kSources),
        [this](Recording::Source source) { return Came(source).size() < Expected(source).size(); });
}

bool Replay::IsSame(const Line& one, const Line& other) const
{
    return m_recording.leftOut.Compared(one.members) == m_recording.leftOut.Compared(other.members);
}

void Replay::Compare()
{
    for (const Recording::Source source : Recording::kSources)
    {
        const Lines expected = Expected(source);
        const Lines came = Came(source);
        const auto same = [this](const Line* one, const Line* other) { return IsSame(*one, *other); };
        const auto [missed, instead] = std::mismatch(expected.begin(), expected.end(), came.begin(), came.end(), same);
        if (missed == expected.end() && instead == came.end())
            continue;
        const Line* const wanted = missed == expected.end() ? nullptr : *missed;
        const Line* const present = instead == came.end() ? nullptr : *instead;
        const auto comesLater = [&same](const Line* line, auto from, auto to) {
            return line && std::any_of(from, to, [&](const Line* other) { return same(line, other); });
        };
        const bool wantedLater = comesLater(wanted, instead, came.end());
        const bool presentLater = comesLater(present, missed, expected.end());
        const bool sameName =
            wanted && present && Recording::NameOf(wanted->members) == Recording::NameOf(present->members);
        const QString what = wantedLater && presentLater            ? QStringLiteral("in another order")
                             : !present || (wanted && presentLater) ? QStringLiteral("this did not come")
                             : !wanted || wantedLater               ? QStringLiteral("this was not recorded")
                             : sameName                             ? QStringLiteral("another value")
                                                                    : QStringLiteral("another came");
        Report(what, Present().request, missed == expected.begin() ? nullptr : *std::prev(missed), wanted, present);
    }
}

/// Of what another thread writes, what is left in the end.
void Replay::CompareBackground()
{
    struct Written
    {
        const Line* request = nullptr;
        const Line* line = nullptr;
    };
    std::map<QString, Written> expected;
    for (const Recording::Step& step : m_recording.steps)
        for (const Line& line : step.effects)
            if (IsWrite(line.members) && m_background.count(PlaceOf(line.members)) != 0)
                expected[PlaceOf(line.members)] = {&step.request, &line};
    const auto hasCome = [&](const auto& one) {
        const auto found = m_lastWritten.find(one.first);
        return found != m_lastWritten.end() && IsSame(*one.second.line, found->second);
    };
    Await([&] { return std::all_of(expected.begin(), expected.end(), hasCome); }, kBackgroundPatienceMs);
    for (const auto& one : expected)
    {
        const auto found = m_lastWritten.find(one.first);
        const bool came = found != m_lastWritten.end();
        if (!hasCome(one))
            Report(came ? QStringLiteral("another value") : QStringLiteral("this did not come"), *one.second.request,
                   nullptr, one.second.line, came ? &found->second : nullptr);
    }
    if (m_host.plugIn.IsLoaded())
        return; // there may be more by now than when the recording ended
    for (const QString& place : m_background)
        if (expected.count(place) == 0)
            Report(QStringLiteral("this was not recorded"), m_recording.steps.back().request, nullptr, nullptr,
                   &m_lastWritten.at(place));
}

void Replay::Report(const QString& what, const Line& request, const Line* before, const Line* expected,
                    const Line* came)
{
    const auto text = [](const QVariantMap& members) { return QString::fromUtf8(Json::Write(members)); };
    const auto line = [&text](const Line* shown) { return shown ? text(shown->members) : QStringLiteral("nothing"); };
    ++m_differences;
    m_print(QStringLiteral("%1: line %2: %3").arg(m_file).arg(expected ? expected->number : request.number).arg(what));
    m_print(QStringLiteral("  request   ") + text(RequestOf(request)));
    if (before)
        m_print(QStringLiteral("  before    ") + line(before));
    m_print(QStringLiteral("  expected  ") + line(expected));
    m_print(QStringLiteral("  came      ") + line(came));
}
