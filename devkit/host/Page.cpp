#include "devkit/host/Page.h"

#include "devkit/core/Host.h"
#include "devkit/core/Json.h"
#include "devkit/core/Session.h"
#include "devkit/host/OpenFile.h"
#include "devkit/host/Options.h"
#include "devkit/host/Watchdog.h"
#include "devkit/page/PageServer.h"
#include "devkit/process/StandardStreams.h"

#include <QCoreApplication>
#include <QFile>

namespace
{

constexpr int kMostBeatsAlone = 60; // beats without a page, for a host that nothing else keeps

/// What a page does with the host: a session as every other client has it.
class HostPeer final : public PagePeer
{
public:
    HostPeer(Host& host, Client& client, Session::Rights rights) : m_session(Session::Open(host, client, rights)) {}

    QVariantMap Greeting() const override { return Session::Greeting(); }
    void Submit(const QByteArray& text) override { m_session->SubmitString(text); }
    void Close() override { m_session->Close(); }
    std::size_t Waiting() const override { return m_session->Waiting(); }

private:
    const std::shared_ptr<Session> m_session;
};

/// What the watchdog hands to a host that goes on in the stead of another.
QVariantMap Inherited()
{
    StandardInput input;
    QByteArray line;
    for (QByteArray piece = input.Read(); !piece.isEmpty(); piece = input.Read())
        line += piece;
    return Json::Parse(line).value.toMap();
}

/// A browser is led to the page by a file that only its user can read: on a command line everybody saw the token.
bool OpenInBrowser(const DataFolder& folder, const QString& address)
{
    QFile file(folder.Path() + QLatin1String("/open-page.html"));
    file.remove();
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly) &&
           file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) &&
           file.write(QStringLiteral("<!doctype html><meta http-equiv=\"refresh\" content=\"0; url=%1\">")
                          .arg(address)
                          .toUtf8()) > 0 &&
           file.flush() && OpenFile(file.fileName());
}

} // namespace

int Page::RunWatchdog()
{
    return Watchdog().Run();
}

Page::Page(Host& host, const Options& options)
{
    if (!options.page)
        return;
    const auto rights = options.pageMayQuit ? Session::Rights::All : Session::Rights::Page;
    m_server = std::make_unique<PageServer>(
        [&host, rights](Client& client) { return std::make_unique<HostPeer>(host, client, rights); });
    if (options.goesOn)
    {
        const QVariantMap inherited = Inherited();
        m_server->Share(inherited.value(QStringLiteral("socket")).value<qintptr>(),
                        inherited.value(QStringLiteral("token")).toString().toUtf8());
        m_server->Accept();
    }
    else
        m_problem = m_server->Listen();
    if (!m_problem.isEmpty())
        return;
    m_address = m_server->Address();
    StartWatchdog(host, options);
    if (options.openPage && !OpenInBrowser(host.folder, m_address))
        m_problem = QStringLiteral("No browser could be started; open the page's address in one.");
}

Page::~Page()
{
    if (m_server)
        m_server->SetOnClients([] {});
    m_watchdog.kill();
    m_watchdog.waitForFinished();
}

void Page::StartWatchdog(Host& host, const Options& options)
{
    QStringList arguments{QLatin1String(kGoOnOption), QStringLiteral("--data"), host.folder.Path(),
                          QStringLiteral("--library"), options.plugInFile};
    if (options.openUrls)
        arguments += QStringLiteral("--open-urls");
    if (options.pageMayQuit)
        arguments += QStringLiteral("--page-may-quit");
    Watchdog::Start(m_watchdog, {QLatin1String(kWatchdogOption)}, m_server->Socket(),
                    {{QStringLiteral("host"), QCoreApplication::applicationPid()},
                     {QStringLiteral("socket"), static_cast<qlonglong>(m_server->Socket())},
                     {QStringLiteral("token"), QString::fromLatin1(m_server->Token())},
                     {QStringLiteral("arguments"), arguments}});
    m_beat.setInterval(Watchdog::kBeatMs);
    QObject::connect(&m_beat, &QTimer::timeout, &m_beat, [this, &host, goesOn = options.goesOn, alone = 0]() mutable {
        Beat();
        alone = m_server->HasClients() ? 0 : alone + 1;
        if (goesOn && alone == kMostBeatsAlone)
            host.RequestQuit();
    });
    m_server->SetOnClients([this, goesOn = options.goesOn] {
        Beat();
        m_server->HasClients() || goesOn ? m_beat.start() : m_beat.stop();
    });
    if (options.goesOn)
        m_beat.start();
}

void Page::Beat()
{
    const char beat = m_server->HasClients() ? Watchdog::kOpen : Watchdog::kAlone;
    if (m_watchdog.state() == QProcess::Running)
        m_watchdog.write(&beat, 1);
}
