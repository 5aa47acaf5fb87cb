#pragma once

#include "devkit/core/Client.h"
#include "devkit/core/Recording.h"

#include <QObject>
#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

class Host;
class Session;

/// A client of a fresh host that asks for what a recording asks for, and compares what the plug-in does with what it
/// did. UI thread.
class Replay : public Client
{
public:
    enum Outcome
    {
        Same = 0,
        Differs = 1,
        Unusable = 2 // not a recording of this host's, or not a whole one
    };

    /// Takes each line of what is to be told.
    using Print = std::function<void(const QString& line)>;

    enum class Aim
    {
        Compare, // until there are a few differences
        Renew    // all of it, without waiting for what does not come any more
    };

    /// `file` is how the recording is called.
    Replay(Host& host, Aim aim, QString file, Print print);
    ~Replay() override;

    /// Carries out the recording.
    Outcome Run(const QByteArray& text);

    /// The recording anew, with what came in place of what was recorded; after Run().
    const QByteArray& Renewed() const { return m_renewed; }

    void Receive(const QVariantMap& message) override;

private:
    using Line = Recording::Line;
    using Lines = std::vector<const Line*>;

    const Recording::Step& Present() const { return m_recording.steps[m_step]; }
    void Prepare(const QVariantMap& head);
    void Ask(const QString& op, const QVariantMap& arguments);
    void Submit(const QVariantMap& request);
    void CarryOut();
    void AnswerPrompt(const QVariant& prompt);
    void Await(const std::function<bool()>& come, qint64 patienceMs) const;

    void OnEffect(const QVariantMap& effect);
    /// The present step's effects of one source, as they were recorded and as they came.
    Lines Expected(Recording::Source source) const;
    Lines Came(Recording::Source source) const;
    bool IsOf(Recording::Source source, const Line& line) const;
    bool IsBehind() const;
    void Compare();
    void CompareBackground();
    bool IsSame(const Line& one, const Line& other) const;
    void Report(const QString& what, const Line& request, const Line* before, const Line* expected, const Line* came);

    bool GoesOn() const;

    Host& m_host;
    const Aim m_aim;
    const QString m_file;
    const Print m_print;
    Recording m_recording;
    std::size_t m_step = 0; // the one that is carried out
    int m_unanswered = 0;
    std::vector<Line> m_came;              // since it began
    std::set<QString> m_background;        // scopes and keys that were or are written by another thread
    std::map<QString, Line> m_lastWritten; // what came, by scope and key
    int m_differences = 0;
    QByteArray m_renewed;
    QObject m_context; // of what is called back
    std::shared_ptr<Session> m_session;
};
