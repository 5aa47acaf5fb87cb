// The host of a build without Qt's WebSockets.

#include "devkit/host/Options.h"
#include "devkit/host/Page.h"

#include <cstdlib>

class PageServer
{};

int Page::RunWatchdog()
{
    return EXIT_FAILURE;
}

Page::Page(Host&, const Options& options)
{
    if (options.page)
        m_problem = QStringLiteral("The page is not part of this build: it was made without Qt's WebSockets.");
}

Page::~Page() = default;
