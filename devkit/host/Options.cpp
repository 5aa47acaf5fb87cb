#include "devkit/host/Options.h"

#include "devkit/core/DataFolder.h"
#include "devkit/host/Page.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

Options Options::FromCommandLine()
{
    const QCommandLineOption jsonLines(
        QStringLiteral("jsonl"),
        QStringLiteral("Take requests as JSON Lines from standard input and answer on standard output."));
    const QCommandLineOption data(QStringLiteral("data"),
                                  QStringLiteral("Keep the store, the logs and the registry files in <folder>."),
                                  QStringLiteral("folder"), DataFolder::DefaultPath());
    const QCommandLineOption temporary(QStringLiteral("temporary"),
                                       QStringLiteral("Use a fresh data folder and delete it at the end."));
    const QCommandLineOption openUrls(QStringLiteral("open-urls"),
                                      QStringLiteral("Hand addresses that the plug-in opens to the desktop."));
    const QCommandLineOption plugIn(
        QStringLiteral("library"), QStringLiteral("Load the plug-in from <file> instead of the one beside the host."),
        QStringLiteral("file"),
        QCoreApplication::applicationDirPath() + QLatin1String("/Veridan" VERIDAN_MODULE_SUFFIX));
    const QCommandLineOption page(QStringLiteral("page"),
                                  QStringLiteral("Serve the page for browsers, also with --jsonl."));
    const QCommandLineOption noPage(QStringLiteral("no-page"), QStringLiteral("Serve no page."));
    const QCommandLineOption openPage(QStringLiteral("open"), QStringLiteral("Open the page in the browser."));
    const QCommandLineOption pageMayQuit(QStringLiteral("page-may-quit"), QStringLiteral("Let a page end the host."));
    const QCommandLineOption replay(
        QStringLiteral("replay"),
        QStringLiteral("Carry out the recording in <file> on a fresh data folder and tell what the plug-in does "
                       "otherwise. The exit code is 0 for the same, 1 for a difference, 2 for no usable recording."),
        QStringLiteral("file"));
    const QCommandLineOption renew(QStringLiteral("renew"),
                                   QStringLiteral("With --replay: write the recording anew with what came."));
    QCommandLineOption goOn(QLatin1String(Page::kGoOnOption).mid(2));
    goOn.setFlags(QCommandLineOption::HiddenFromHelp);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Loads the Veridan plug-in and shows its main page. Type \"help\" at the prompt for the commands."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions(
        {jsonLines, data, temporary, openUrls, plugIn, page, noPage, openPage, pageMayQuit, goOn, replay, renew});
    parser.process(*QCoreApplication::instance());

    QString problem;
    if (parser.isSet(temporary) && parser.isSet(data))
        problem = QStringLiteral("--data and --temporary exclude each other.");
    else if (!parser.isSet(temporary) && parser.value(data).isEmpty())
        problem = parser.isSet(data) ? QStringLiteral("--data needs a folder.")
                                     : QStringLiteral("This user has no home folder; name a data folder with --data.");
    else if (parser.isSet(noPage) && (parser.isSet(page) || parser.isSet(openPage)))
        problem = QStringLiteral("--no-page excludes --page and --open.");
    else if (parser.isSet(replay) && (parser.isSet(jsonLines) || parser.isSet(data) || parser.isSet(page)))
        problem = QStringLiteral("--replay excludes --jsonl, --data and --page.");
    else if (parser.isSet(renew) && !parser.isSet(replay))
        problem = QStringLiteral("--renew goes with --replay.");
    else if (!parser.positionalArguments().isEmpty())
        problem = QStringLiteral("There are no arguments but options; see --help.");
    return {parser.isSet(jsonLines),
            parser.isSet(temporary),
            parser.isSet(openUrls),
            !parser.isSet(noPage) && (!parser.isSet(jsonLines) || parser.isSet(page) || parser.isSet(openPage)),
            parser.isSet(openPage),
            parser.isSet(pageMayQuit),
            parser.isSet(goOn),
            parser.value(data),
            QFileInfo(parser.value(plugIn)).absoluteFilePath(),
            parser.value(replay),
            parser.isSet(renew),
            problem};
}
