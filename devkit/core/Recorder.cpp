#include "devkit/core/Recorder.h"

#include "devkit/core/Host.h"
#include "devkit/core/LogTail.h"
#include "devkit/core/Session.h"
#include "devkit/core/SuiteLists.h"

#include <utility>

namespace
{

constexpr int kLateMs = 100; // what comes later has waited for a timer or for somebody else

/// Commands that may run the plug-in's code and yet change nothing themselves.
const QStringList& Unrecorded()
{
    static const QStringList s_ops{QStringLiteral("record"), QStringLiteral("settle"), QStringLiteral("quit")};
    return s_ops;
}

QVariant Take(QVariantMap& members, const char* name)
{
    return members.take(QLatin1String(name));
}

} // namespace

Recorder::Recorder(Host& host, Sink sink)
    : m_sink(std::move(sink)), m_flyersBefore(SuiteLists::Flyers().size()), m_session(Session::Open(host, *this))
{
    m_sinceRequest.start();
    m_sinceLine.start();
    for (const char* const topic : {"requests", "variables", "writes", "flyers", "metrics", "urls", "log"})
        m_session->Submit(
            {{QStringLiteral("op"), QStringLiteral("watch")}, {QStringLiteral("topic"), QLatin1String(topic)}});
}

Recorder::~Recorder()
{
    m_session->Close();
}

void Recorder::Receive(const QVariantMap& event)
{
    QVariantMap members = event;
    const QString name = Take(members, "event").toString();
    if (name == QLatin1String("request"))
        OnRequest(members.value(QStringLiteral("request")).toMap());
    else if (name == QLatin1String("answer"))
        OnAnswer(members);
    else if (name == QLatin1String("variable"))
        OnVariable(members);
    else if (name == QLatin1String("write"))
        OnWrite(members);
    else if (name == QLatin1String("flyer"))
        OnFlyer(members);
    else if (name == QLatin1String("metric"))
        Add({{name, members}});
    else if (name == QLatin1String("url"))
        Add(members);
    else if (name == QLatin1String("log"))
        OnLogLine(members.value(QStringLiteral("line")).toString());
}

void Recorder::OnRequest(QVariantMap request)
{
    const QString flyer = QStringLiteral("flyer");
    if (request.contains(flyer))
        request[flyer] = request[flyer].toInt() - m_flyersBefore;
    if (!Unrecorded().contains(request.value(QStringLiteral("op")).toString()))
        AddRequest({{QStringLiteral("request"), request}});
}

void Recorder::OnAnswer(const QVariantMap& answer)
{
    const QString name =
        answer.value(QStringLiteral("ok")).toBool() ? QStringLiteral("result") : QStringLiteral("error");
    const QVariant value = answer.value(name);
    if (value.isValid() && !Unrecorded().contains(answer.value(QStringLiteral("op")).toString()))
        Add({{name, value}});
}

void Recorder::OnVariable(const QVariantMap& change)
{
    const QString value = QStringLiteral("value");
    if (change.value(QStringLiteral("by")) != QLatin1String("plugin"))
        return;
    QVariantMap line{{change.value(QStringLiteral("kind")).toString(), change.value(QStringLiteral("name"))}};
    if (line.contains(QStringLiteral("set")))
        line.insert(value, change.value(value));
    Add(line);
}

/// The plug-in's writes are lines; what another process wrote becomes a request of the product.
void Recorder::OnWrite(const QVariantMap& write)
{
    const QString by = write.value(QStringLiteral("by")).toString();
    if (by == QLatin1String("product"))
        return;
    QStringList members{QStringLiteral("scope")};
    QString kind = QStringLiteral("constrain");
    if (write.value(QStringLiteral("of")) != QLatin1String("value"))
        members << QStringLiteral("constraints");
    else if (write.value(QStringLiteral("value")).isValid())
    {
        kind = QStringLiteral("write");
        members << QStringLiteral("type") << QStringLiteral("value");
    }
    else
        kind = QStringLiteral("remove");
    QVariantMap line;
    for (const QString& member : members)
        line.insert(member, write.value(member));
    const QVariant key = write.value(QStringLiteral("key"));
    if (by != QLatin1String("other"))
    {
        line.insert(kind, key);
        if (by == QLatin1String("background"))
            line.insert(by, true);
        return Add(line);
    }
    line.insert(QStringLiteral("op"),
                QStringLiteral("store.") + (kind == QLatin1String("write") ? QStringLiteral("set") : kind));
    line.insert(QStringLiteral("key"), key);
    AddRequest({{QStringLiteral("by"), by}, {QStringLiteral("request"), line}});
}

void Recorder::OnFlyer(QVariantMap flyer)
{
    const QString id = QStringLiteral("id");
    flyer[id] = flyer[id].toInt() - m_flyersBefore;
    Add({{QStringLiteral("flyer"), flyer}});
}

/// Of the log what it has by default: that something went wrong, or was decided.
void Recorder::OnLogLine(const QString& line)
{
    constexpr int kHighestLevel = 4; // as the log has it by default
    const std::optional<LogMessage> message = MessageBegunBy(line);
    const bool ofTheLogItself = message && message->text.startsWith(QLatin1String("***"));
    if (message && !ofTheLogItself && message->level > 0 && message->level <= kHighestLevel)
        Add({{QStringLiteral("log"), message->text}, {QStringLiteral("level"), message->level}});
}

void Recorder::AddRequest(const QVariantMap& line)
{
    QVariantMap timed = line;
    timed.insert(QStringLiteral("ms"), m_sinceRequest.restart());
    m_sinceLine.start();
    m_sink(timed);
}

void Recorder::Add(QVariantMap line)
{
    const qint64 ms = m_sinceLine.restart();
    if (ms >= kLateMs)
        line.insert(QStringLiteral("ms"), ms);
    m_sink(line);
}
