#pragma once

#include "tests/support/ChildProcess.h"

#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>

#include <functional>
#include <iosfwd>
#include <vector>

/// The longest wait for a host, in milliseconds.
inline constexpr int kDeadlineMs = 20000;

/// How a failed expectation shows a value.
void PrintTo(const QVariant& value, std::ostream* stream);

/// A development host in a process of its own, driven by JSON Lines. What goes against expectation (no answer in time,
/// a refusal where a result was asked for) fails the running test and is told with what the host wrote on standard
/// error.
class HostProcess
{
public:
    struct Setup
    {
        QString dataFolder;  // empty: a fresh one, deleted at the end
        QStringList options; // beside --jsonl and --data
        bool expectHello = true;
        QStringList launcher = {}; // the program that starts the host, and its arguments before the host's own
    };

    HostProcess();
    explicit HostProcess(const Setup& setup);
    ~HostProcess();
    HostProcess(const HostProcess&) = delete;
    HostProcess& operator=(const HostProcess&) = delete;

    /// The result of a command that must succeed.
    QVariant Do(const QString& op, const QVariantMap& arguments = {});
    /// The error of a command that must fail; never empty.
    QString Fails(const QString& op, const QVariantMap& arguments = {});

    // The commands that every scenario uses.
    QVariant Get(const QString& name) { return Do("get", {{"name", name}}); }
    void Set(const QString& name, const QVariant& value) { Do("set", {{"name", name}, {"value", value}}); }
    void Trigger(const QString& name) { Do("trigger", {{"name", name}}); }
    QVariantMap StoreGet(const QString& scope, const QString& key);
    void StoreSet(const QString& scope, const QString& key, const QString& type, const QVariant& value);
    void Load();

    /// Sends a command without awaiting its answer, which is the next line that Receive() gives.
    void Post(const QString& op, const QVariantMap& arguments);

    /// Sends bytes as they are, and the next line that comes back, whatever it is.
    void Send(const QByteArray& bytes);
    QVariantMap Receive();

    /// Awaits an event, among those that came already too, and takes it. Empty when the time is over.
    QVariantMap AwaitEvent(const std::function<bool(const QVariantMap& event)>& wanted);
    /// The events that have come and were not taken.
    std::vector<QVariantMap> TakeEvents();

    /// Closes standard input and awaits the end. The exit code, -1 after a crash or none in time.
    int Finish();
    /// Ends it without a warning.
    void Kill();
    bool IsRunning() const { return m_process.state() == QProcess::Running; }

    QString DataFolder() const { return m_dataFolder; }
    QString Errors();
    QVariantMap Hello() const { return m_hello; }

    /// The program beside the test.
    static QString Program();

private:
    QVariantMap Request(const QString& op, const QVariantMap& arguments);

    QTemporaryDir m_temporary;
    QString m_dataFolder;
    ChildProcess m_process;
    QByteArray m_output;
    QByteArray m_errors;
    QVariantMap m_hello;
    std::vector<QVariantMap> m_events;
    int m_nextId = 1;
};
