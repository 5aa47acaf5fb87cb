#include "devkit/strata_cli/StrataCommands.h"

#include "devkit/core/Json.h"
#include "devkit/core/Printable.h"
#include "devkit/core/StoreCommands.h"
#include "devkit/core/Words.h"
#include "devkit/process/StandardStreams.h"
#include "devkit/process/Termination.h"
#include "devkit/strata_cli/EntryString.h"
#include "devkit/strata_cli/Files.h"

#include <QCoreApplication>

#include <atomic>
#include <cstdio>

namespace
{

/// Reads a file that Export has written.
Result<QVariantMap> ReadEntries(const QString& file)
{
    using Read = Result<QVariantMap>;
    const Result<QByteArray> contents = ReadInput(file);
    if (!contents.Ok())
        return Read::Failure(contents);
    const Json::Parsed parsed = Json::Parse(contents.value);
    if (!parsed.error.isEmpty())
        return Read::Failure(QStringLiteral("%1, %2.").arg(file, parsed.error), FailureKind::Refused);
    if (parsed.value.userType() != QMetaType::QVariantMap)
        return Read::Failure(QStringLiteral("%1 holds no object of entries by key.").arg(file), FailureKind::Refused);
    return {parsed.value.toMap(), {}};
}

/// Options may stand before the command too.
QStringList CommandFirst(QStringList words)
{
    int at = 0;
    while (at < words.size() && words[at].startsWith(QLatin1String("--")) && words[at].size() > 2)
        at += words[at].contains(QLatin1Char('=')) ? 1 : 2;
    if (at < words.size() && words[at] == QLatin1String("--"))
        words.removeAt(at);
    if (at < words.size())
        words.move(at, 0);
    return words;
}

/// What the program ends with beside 0.
int ExitCodeOf(FailureKind kind)
{
    switch (kind)
    {
    case FailureKind::Failed:
        return 1;
    case FailureKind::Misused:
        return 2;
    case FailureKind::NotFound:
        return 3;
    case FailureKind::Refused:
        return 4;
    }
    return 1;
}

} // namespace

StrataCommands::StrataCommands(StoreAccess& store, StandardOutput& output, bool json)
    : m_store(store), m_output(output), m_json(json)
{
    using namespace CommandWords;
    const Parameter scope{"scope", Kind::Name, kRequired, nullptr, "user"};
    const Parameter anyScope{"scope", Kind::Name, kOptional, nullptr, ""};
    const Parameter prefix{"prefix", Kind::String, kOptional};
    const Parameter file{"file", Kind::Name, kOptional};
    // The rows of the store's commands, by the last part of their names, and run in this program's way.
    CommandTable known;
    known.Add(StoreCommands(store));
    const auto own = [&known](const char* op, const char* name) {
        Command command = *known.Find(QLatin1String(op));
        command.op = name;
        return command;
    };
    Command get = own("store.get", "get");
    get.run = [this](const Arguments& arguments) { return Get(arguments); };
    Command list = own("store.list", "list");
    list.run = [this](const Arguments& arguments) { return List(arguments); };
    m_table.Add({get,
                 list,
                 own("store.set", "set"),
                 own("store.remove", "remove"),
                 own("store.constrain", "constrain"),
                 {"watch",
                  "prints changes as they happen, until Ctrl-C",
                  {scope, prefix},
                  [this](const Arguments& arguments) { return Watch(arguments); }},
                 {"export",
                  "writes a scope as JSON",
                  {scope, file},
                  [this](const Arguments& arguments) { return Export(arguments); }},
                 {"import",
                  "writes every entry of an export, or none of them",
                  {scope, {"file", Kind::Name}},
                  [this](const Arguments& arguments) { return Import(arguments); }},
                 {"seed",
                  "the same, but keeps values that are there; without a file the defaults of all settings",
                  {anyScope, file},
                  [this](const Arguments& arguments) { return Seed(arguments); }}});
}

int StrataCommands::Run(const QStringList& arguments)
{
    const QStringList words = CommandFirst(arguments);
    const Words::Named named = Words::Find(m_table, words);
    if (!named.command)
    {
        const QString what = words.isEmpty() ? QStringLiteral("There is no command.")
                                             : QStringLiteral("There is no command %1.").arg(words.first());
        return Complain(what + QLatin1String(" See strata --help."), FailureKind::Misused);
    }
    Result<QVariantMap> request = Words::ToRequest(*named.command, Words::Line::FromWords(words), named.words);
    if (!request.Ok())
        return Complain(request.error, request.kind);
    const bool isSet = QLatin1String(named.command->op) == QLatin1String("set");
    if (isSet)
    {
        const Answer completed = Complete(request.value);
        if (!completed.Ok())
            return Complain(completed.error, completed.kind);
    }
    const QString misuse = named.command->Check(request.value);
    if (!misuse.isEmpty())
        return Complain(misuse, FailureKind::Misused);
    const Answer answer = named.command->run(Arguments(request.value));
    return answer.Ok() ? 0 : Complain(answer.error, answer.kind);
}

int StrataCommands::Complain(const QString& sentence, FailureKind kind)
{
    std::fprintf(stderr, "strata: %s\n", qUtf8Printable(Printable(sentence)));
    return ExitCodeOf(kind);
}

Answer StrataCommands::Print(const QByteArray& text, const QString& file)
{
    return {{}, WriteOutput(file, text, m_output)};
}

Answer StrataCommands::Get(const Arguments& arguments)
{
    const QString key = arguments.String("key");
    const Result<StoreEntry> entry = m_store.Get(arguments.String("scope"), key);
    if (!entry.Ok())
        return Answer::Failure(entry);
    if (!entry.value.HasValue())
        return Answer::Failure(QStringLiteral("There is no value under \"%1\".").arg(key), FailureKind::NotFound);
    return Print((m_json ? EntryString::AsJson(entry.value) : EntryString::Plain(entry.value)) + '\n');
}

Answer StrataCommands::Complete(QVariantMap& request) const
{
    const QString value = QStringLiteral("value");
    if (request.value(value) == QLatin1String("-"))
    {
        Result<QByteArray> input = ReadInput(QStringLiteral("-"));
        if (!input.Ok())
            return Answer::Failure(input);
        for (const char end : {'\n', '\r'}) // the line's end belongs to the line and not to the value
            if (input.value.endsWith(end))
                input.value.chop(1);
        const QString text = QString::fromUtf8(input.value);
        if (text.toUtf8() != input.value)
            return Answer::Failure(QStringLiteral("The value is not UTF-8 text."), FailureKind::Refused);
        request.insert(value, text);
    }
    const QString key = request.value(QStringLiteral("key")).toString();
    if (key.isEmpty() || request.value(QStringLiteral("scope")).toString().isEmpty())
        return {}; // which the check of the arguments says
    bool isNew = false;
    const Answer completed = CompleteStoreSet(m_store, request, isNew);
    if (completed.Ok() && isNew)
    {
        const QString note = QStringLiteral("\"%1\" is new; its value is taken as %2 (--type says otherwise).");
        std::fprintf(stderr, "strata: %s\n",
                     qUtf8Printable(Printable(note.arg(key, request.value(QStringLiteral("type")).toString()))));
    }
    return completed;
}

Answer StrataCommands::List(const Arguments& arguments)
{
    const auto entries = m_store.List(arguments.String("scope"), arguments.String("prefix"));
    if (!entries.Ok())
        return Answer::Failure(entries);
    if (m_json)
        return Print(EntryString::Export(entries.value));
    QByteArray lines;
    for (const auto& [key, entry] : entries.value)
        lines += EntryString::AsLine(key, entry);
    return Print(lines);
}

Answer StrataCommands::Watch(const Arguments& arguments)
{
    const Termination termination([this] { m_output.Cancel(); });
    std::atomic<bool> failed{false};
    const auto tell = [this, &failed](const QString& key, bool removed, const StoreEntry& entry) {
        QByteArray line = removed ? Printable(key).toUtf8() + " removed\n" : EntryString::AsLine(key, entry);
        if (m_json)
            line = R"({"key":)" + Json::Write(key) + R"(,"change":)" +
                   (removed ? QByteArray("\"removed\"}\n") : "\"changed\"," + EntryString::AsJson(entry).mid(1) + '\n');
        if (!failed && !m_output.Write(line))
        {
            failed = true;
            m_output.Cancel();
        }
    };
    const auto watch = m_store.WatchChanges(arguments.String("scope"), arguments.String("prefix"), tell);
    if (!watch.Ok())
        return Answer::Failure(watch);
    std::fputs("strata: watching; Ctrl-C ends it.\n", stderr);
    std::fflush(stderr); // some C libraries hold it back where it is not a terminal
    m_output.WaitForEnd();
    const QString error = m_output.Error();
    return {{}, error.isEmpty() ? error : QStringLiteral("Standard output cannot be written: %1.").arg(error)};
}

Answer StrataCommands::Export(const Arguments& arguments)
{
    const auto entries = m_store.List(arguments.String("scope"), {});
    if (!entries.Ok())
        return Answer::Failure(entries);
    return Print(EntryString::Export(entries.value), arguments.Value("file", QStringLiteral("-")).toString());
}

Answer StrataCommands::Write(const QString& scope, const QVariantMap& entries, bool absent)
{
    const QVariantMap request{
        {QStringLiteral("scope"), scope}, {QStringLiteral("entries"), entries}, {QStringLiteral("absent"), absent}};
    CommandTable known;
    known.Add(StoreCommands(m_store));
    Answer answer = known.Find(QStringLiteral("store.write"))->run(Arguments(request));
    if (answer.kind == FailureKind::Refused)
        answer.error += QLatin1String(" Nothing was written.");
    return answer;
}

Answer StrataCommands::Import(const Arguments& arguments)
{
    const Result<QVariantMap> entries = ReadEntries(arguments.String("file"));
    return entries.Ok() ? Write(arguments.String("scope"), entries.value, false) : Answer::Failure(entries);
}

/// The defaults serve every scope alike; a file is for one.
Answer StrataCommands::Seed(const Arguments& arguments)
{
    const bool fromFile = arguments.Has("file");
    const Result<QVariantMap> entries = ReadEntries(
        fromFile ? arguments.String("file") : QCoreApplication::applicationDirPath() + QLatin1String("/defaults.json"));
    if (!entries.Ok())
        return Answer::Failure(entries);
    QStringList scopes{arguments.Value("scope", QStringLiteral("user")).toString()};
    if (!fromFile && !arguments.Has("scope"))
        scopes.append(QStringLiteral("system"));
    Answer answer;
    for (int i = 0; i < scopes.size() && answer.Ok(); ++i)
        answer = Write(scopes[i], entries.value, true);
    return answer;
}
