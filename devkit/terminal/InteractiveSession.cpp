#include "devkit/terminal/InteractiveSession.h"

#include "devkit/core/Host.h"
#include "devkit/core/LogTail.h"
#include "devkit/terminal/MainPage.h"
#include "devkit/terminal/ValueText.h"

#include <QTime>
#include <QTimer>

InteractiveSession::InteractiveSession(Host& host)
    : m_host(host), m_console({[this](const QString& line) { m_commands.Run(line); }, [&host] { host.RequestQuit(); }}),
      m_commands(host, m_console)
{}

InteractiveSession::~InteractiveSession()
{
    m_host.hub.SetObserver(nullptr);
    m_host.urls.SetObserver(nullptr);
}

QString InteractiveSession::Start()
{
    const PlugInLoader::Outcome outcome = m_host.plugIn.Load();
    if (!outcome.initialized)
    {
        constexpr int Lines = 5;
        constexpr int Errors = 2;
        const QStringList why = ReadLogTail(m_host.folder.LogFile(), Lines, Errors);
        return (QStringList{outcome.error} + why).join(QLatin1String("\n  "));
    }
    m_commands.ShowPage();
    m_host.hub.SetObserver(
        [this](const VariableChange& change, const QVariant& previous) { OnChange(change, previous); });
    m_host.urls.SetObserver(
        [this](const QString& url) { m_console.Print(QStringLiteral("The plug-in opens %1\n").arg(url)); });
    m_console.Listen();
    return {};
}

void InteractiveSession::Warn(const QString& sentence)
{
    m_console.Print(QStringLiteral("  ") + m_console.Style().Notice(sentence) + QLatin1Char('\n'));
}

void InteractiveSession::OnChange(const VariableChange& change, const QVariant& previous)
{
    const TextStyle& style = m_console.Style();
    const bool isTrigger = change.kind == VariableChange::Kind::Trigger;
    if (!isTrigger && change.value == previous)
        return;
    const QString name = MainPage::TitleOf(change.name);
    if (!isTrigger && !previous.isValid() && change.by == Actor::PlugIn && name == change.name)
    {
        CountFirstValue();
        return;
    }
    constexpr int TitleColumns = 28;
    const QString time = style.Faint(QTime::currentTime().toString(QStringLiteral("hh:mm:ss.zzz")));
    const QString title = name.leftJustified(TitleColumns);
    const QString what =
        isTrigger ? style.Faint(QStringLiteral("fired by the %1")
                                    .arg(change.by == Actor::Page ? QStringLiteral("page") : QStringLiteral("plug-in")))
                  : ValueText::Short(previous) + QLatin1Char(' ') + style.Arrow() + QLatin1Char(' ') +
                        style.Strong(ValueText::Short(change.value));
    m_console.Print(QStringLiteral("  %1  %2  %3\n").arg(time, title, what));
}

void InteractiveSession::CountFirstValue()
{
    if (m_firstValues++ == 0)
    {
        QTimer::singleShot(
            0, &m_firstValuesTold,
            [this] {
                const QString text = QStringLiteral("%1 variables of other pages have their first value; "
                                                    "\"variables\" lists them.");
                m_console.Print(QStringLiteral("  ") + m_console.Style().Faint(text.arg(m_firstValues)) +
                                QLatin1Char('\n'));
                m_firstValues = 0;
            });
    }
}
