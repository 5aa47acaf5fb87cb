// strata: reads and writes the settings store.

#include "devkit/core/DataFolder.h"
#include "devkit/core/StoreAccess.h"
#include "devkit/core/UserSid.h"
#include "devkit/process/CommandLine.h"
#include "devkit/process/StandardStreams.h"
#include "devkit/strata_cli/Files.h"
#include "devkit/strata_cli/StrataCommands.h"

#include <QCoreApplication>

#include <optional>

namespace
{

constexpr const char* kHelpTail = R"(
  --scope SCOPE    whose settings: system, user (unless named) or a SID
  --type TYPE      of a value. Without it the type that the key has; for a new key
                   true and false are bool, integers int32 or int64, {...} and
                   [...] object, anything else string
  --data DIR       the folder that holds store.db (the file named by the
                   environment variable ORB_STRATA_STORE, else the development
                   host's folder)
  --json           prints entries as JSON: type, value, constraints
  --help           prints this

A FILE or VALUE "-" is standard input or output; constraints are a number,
"enforced" or "none". What follows -- is no option.

Ends with 0 when done, 1 if the store or a file could not be read or written,
2 if the command line makes no sense, 3 if there is no such value, 4 if a value
or a file is not well-formed.
)";

/// The options that are not the commands' own, taken out of the words.
struct Options
{
    bool help = false;
    bool json = false;
    QString storeFile;
    QString problem;

    explicit Options(QStringList& words);
};

Options::Options(QStringList& words)
{
    QStringList rest;
    std::optional<QString> folder;
    const QString data = QStringLiteral("--data");
    for (int i = 0; i < words.size(); ++i)
    {
        const QString& word = words[i];
        if (word == QLatin1String("--"))
        {
            rest += words.mid(i);
            break;
        }
        if (word == QLatin1String("--help") || word == QLatin1String("-h"))
            help = true;
        else if (word == QLatin1String("--json"))
            json = true;
        else if (word == data)
            folder = words.value(++i);
        else if (word.startsWith(data + QLatin1Char('=')))
            folder = word.mid(data.size() + 1);
        else
            rest.append(word);
    }
    words = rest;
    storeFile = folder ? QString() : qEnvironmentVariable("ORB_STRATA_STORE");
    if (!storeFile.isEmpty())
        return;
    if (folder && folder->isEmpty())
        problem = QStringLiteral("The option --data needs a folder.");
    else if (!folder && DataFolder::DefaultPath().isEmpty())
        problem = QStringLiteral("This user has no home folder; name a data folder with --data.");
    storeFile = DataFolder(folder.value_or(DataFolder::DefaultPath())).StoreFile();
}

QString Help(const CommandTable& table)
{
    QString help = QStringLiteral("strata: reads and writes the settings store.\n\n");
    for (const auto& [op, command] : table.Rows())
        help += QStringLiteral("  strata %1\n      %2\n").arg(command.Usage(), QLatin1String(command.help));
    return help + QLatin1String(kHelpTail);
}

} // namespace

int main(int argc, char** argv)
{
    PrepareStandardStreams();
    const QCoreApplication application(argc, argv);
    std::optional<QStringList> words = CommandLine(argc, argv);
    if (!words)
        return StrataCommands::Complain(QStringLiteral("The command line is not UTF-8 text."), FailureKind::Misused);
    const Options options(*words);
    if (!options.help && !options.problem.isEmpty())
        return StrataCommands::Complain(options.problem, FailureKind::Misused);
    StandardOutput output;
    StoreAccess store(options.storeFile, UserSid());
    StrataCommands commands(store, output, options.json);
    if (!options.help)
        return commands.Run(*words);
    const QString error = WriteOutput(QStringLiteral("-"), Help(commands.Table()).toUtf8(), output);
    return error.isEmpty() ? 0 : StrataCommands::Complain(error, FailureKind::Failed);
}
