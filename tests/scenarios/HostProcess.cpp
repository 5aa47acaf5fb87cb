#include "tests/scenarios/HostProcess.h"

#include "devkit/core/Json.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <ostream>
#include <utility>

void PrintTo(const QVariant& value, std::ostream* stream)
{
    *stream << (value.isValid() ? value.typeName() : "no value") << ' ' << Json::Write(value).constData();
}

HostProcess::HostProcess() : HostProcess(Setup()) {}

HostProcess::HostProcess(const Setup& setup)
    : m_dataFolder(setup.dataFolder.isEmpty() ? m_temporary.path() : setup.dataFolder)
{
    QStringList command = setup.launcher + QStringList{Program(), "--jsonl", "--data", m_dataFolder} + setup.options;
    const QString program = command.takeFirst();
    m_process.start(program, command);
    EXPECT_TRUE(m_process.waitForStarted(kDeadlineMs)) << qUtf8Printable(m_process.errorString());
    if (setup.expectHello)
    {
        m_hello = Receive();
        EXPECT_EQ(m_hello.value("event"), "hello");
    }
}

HostProcess::~HostProcess()
{
    if (IsRunning())
        EXPECT_EQ(Finish(), 0) << qUtf8Printable(Errors());
}

QVariant HostProcess::Do(const QString& op, const QVariantMap& arguments)
{
    const QVariantMap answer = Request(op, arguments);
    EXPECT_TRUE(answer.value("ok").toBool())
        << qUtf8Printable(op) << ": " << qUtf8Printable(answer.value("error").toString());
    EXPECT_TRUE(answer.contains("result")) << qUtf8Printable(op);
    return answer.value("result");
}

QString HostProcess::Fails(const QString& op, const QVariantMap& arguments)
{
    const QVariantMap answer = Request(op, arguments);
    EXPECT_EQ(answer.value("ok"), false) << qUtf8Printable(op);
    EXPECT_FALSE(answer.contains("result"));
    EXPECT_FALSE(answer.value("error").toString().isEmpty());
    return answer.value("error").toString();
}

QVariantMap HostProcess::StoreGet(const QString& scope, const QString& key)
{
    return Do("store.get", {{"scope", scope}, {"key", key}}).toMap();
}

void HostProcess::StoreSet(const QString& scope, const QString& key, const QString& type, const QVariant& value)
{
    Do("store.set", {{"scope", scope}, {"key", key}, {"type", type}, {"value", value}});
}

void HostProcess::Load()
{
    const QVariantMap outcome = Do("load").toMap();
    EXPECT_EQ(outcome.value("initialized"), true) << qUtf8Printable(outcome.value("error").toString());
}

void HostProcess::Send(const QByteArray& bytes)
{
    m_process.write(bytes);
}

QVariantMap HostProcess::Receive()
{
    QElapsedTimer timer;
    timer.start();
    int end = m_output.indexOf('\n');
    while (end < 0)
    {
        const int left = kDeadlineMs - static_cast<int>(timer.elapsed());
        if (left <= 0 || !m_process.waitForReadyRead(left))
        {
            ADD_FAILURE() << "The host wrote no line. " << qUtf8Printable(Errors());
            return {};
        }
        const int seen = m_output.size();
        m_output += m_process.readAllStandardOutput();
        end = m_output.indexOf('\n', seen);
    }
    const Json::Parsed line = Json::Parse(m_output.left(end));
    EXPECT_EQ(line.error, "") << m_output.left(end).constData();
    m_output.remove(0, end + 1);
    return line.value.toMap();
}

QVariantMap HostProcess::AwaitEvent(const std::function<bool(const QVariantMap& event)>& wanted)
{
    for (std::size_t i = 0;; ++i)
    {
        if (i == m_events.size())
        {
            QVariantMap event = Receive();
            if (event.isEmpty())
                return {};
            m_events.push_back(std::move(event));
        }
        if (wanted(m_events[i]))
        {
            const QVariantMap found = m_events[i];
            m_events.erase(m_events.begin() + static_cast<std::ptrdiff_t>(i));
            return found;
        }
    }
}

std::vector<QVariantMap> HostProcess::TakeEvents()
{
    return std::exchange(m_events, {});
}

int HostProcess::Finish()
{
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(kDeadlineMs))
    {
        m_process.kill();
        m_process.waitForFinished();
        return -1;
    }
    m_output += m_process.readAllStandardOutput();
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

void HostProcess::Kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

QString HostProcess::Errors()
{
    m_errors += m_process.readAllStandardError();
    return QString::fromLocal8Bit(m_errors);
}

QString HostProcess::Program()
{
    return QCoreApplication::applicationDirPath() + QLatin1String("/veridan-host");
}

void HostProcess::Post(const QString& op, const QVariantMap& arguments)
{
    QVariantMap request = arguments;
    request.insert("id", m_nextId++);
    request.insert("op", op);
    Send(Json::Write(request) + '\n');
}

QVariantMap HostProcess::Request(const QString& op, const QVariantMap& arguments)
{
    const int id = m_nextId;
    Post(op, arguments);
    for (;;)
    {
        QVariantMap message = Receive();
        if (message.isEmpty() || message.contains("id"))
        {
            EXPECT_EQ(message.value("id"), id) << qUtf8Printable(op);
            return message;
        }
        m_events.push_back(std::move(message));
    }
}
