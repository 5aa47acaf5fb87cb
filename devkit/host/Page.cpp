#include "devkit/host/Page.h"
#include "devkit/core/Host.h"
#include "devkit/host/OpenFile.h"
#include "devkit/host/Options.h"
#include "devkit/page/PageServer.h"

#include <QFile>

namespace
{

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

Page::Page(Host& host, const Options& options)
{
    if (!options.page)
        return;
    m_server = std::make_unique<PageServer>(host, options.pageMayQuit);
    m_problem = m_server->Listen();
    if (!m_problem.isEmpty())
        return;
    m_address = m_server->Address();
    if (options.openPage && !OpenInBrowser(host.folder, m_address))
        m_problem = QStringLiteral("No browser could be started; open the page's address in one.");
}

Page::~Page() = default;
