#pragma once

#include "suite/SuiteAbi.h"

#include <QEventLoop>
#include <QObject>
#include <QStringList>

#include <map>

class Sessions;

/// Answers the plug-in when it asks for elevated rights: always the same, or what a client says, who is asked by an
/// event. One of each process. UI thread, but for the prompts of other threads, which wait.
class Elevation : public QObject
{
    Q_OBJECT
public:
    /// How prompts are answered.
    static constexpr const char* kModeNames = "accept|decline|ask";

    explicit Elevation(Sessions& sessions);
    ~Elevation() override;

    void SetMode(const QString& name) { m_mode = static_cast<Mode>(Modes().indexOf(name)); }
    QString ModeName() const { return Modes()[static_cast<int>(m_mode)]; }
    /// Answers a prompt that waits. Why not, as a sentence; empty when it is done.
    QString Answer(quint64 prompt, bool accept);
    /// Declines what waits and nobody would answer.
    void OnWatchesChanged();

private:
    /// In the order of the names.
    enum class Mode
    {
        Accept,
        Decline,
        Ask
    };

    static QStringList Modes() { return QString::fromLatin1(kModeNames).split(QLatin1Char('|')); }
    static bool NL_SUITE_CALL OnPrompt(void* context, const wchar_t* client);
    bool Decide(const QString& client);
    bool Ask(const QString& client);

    struct Prompt
    {
        QEventLoop loop;
        bool accepted = false;
        bool over = false;

        void End(bool accept)
        {
            accepted = accept;
            over = true;
            loop.quit();
        }
    };

    Sessions& m_sessions;
    Mode m_mode = Mode::Accept;
    quint64 m_last = 0;
    std::map<quint64, Prompt*> m_prompts; // those that wait
};
