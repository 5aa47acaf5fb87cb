#pragma once

#include "devkit/core/Arguments.h"
#include "devkit/core/Result.h"

#include <functional>
#include <map>
#include <vector>

/// A command of the protocol: one row with its name, its arguments and what carries it out.
struct Command
{
    /// Takes the answer when it is known.
    using Reply = std::function<void(const Answer& answer)>;

    /// When it may run.
    enum class Turn
    {
        Own,     // alone: it may run the plug-in's code and the event loop
        Any,     // also while another client's command runs: it only looks
        AtOnce,  // also before its own client's earlier commands have ended: it answers what they wait for
        Deferred // it waits without keeping others from running: `begin` is called in place of `run`
    };

    const char* op;
    const char* help;
    std::vector<Parameter> parameters;
    std::function<Answer(const Arguments& arguments)> run;
    Turn turn = Turn::Own;
    std::function<void(const Arguments& arguments, const Reply& reply)> begin = nullptr;

    /// Why the request does not fit the parameters, as a sentence; empty when it does.
    QString Check(const QVariantMap& request) const;
    /// "store.set KEY VALUE [--scope SCOPE]": how it is typed.
    QString Usage() const;
};

/// The words in which rows are written.
namespace CommandWords
{
using Kind = ArgumentKind;
using Turn = Command::Turn;
constexpr auto kOptional = Parameter::Need::Optional;
constexpr auto kRequired = Parameter::Need::Required;
} // namespace CommandWords

/// Commands by their op. From its rows requests are checked, words become requests and the schema is told.
class CommandTable
{
public:
    void Add(const std::vector<Command>& commands);

    /// The command that a request names and whose parameters it fits.
    Result<const Command*> Find(const QVariantMap& request) const;
    const Command* Find(const QString& op) const;

    /// A list of {"op", "help", "parameters"}.
    QVariantList Schema() const;
    const std::map<QString, Command>& Rows() const { return m_commands; }

private:
    std::map<QString, Command> m_commands; // by op
};
