#include "devkit/core/UrlRecorder.h"

#include <QDesktopServices>

#include <array>

namespace
{

/// Qt hands addresses over by their scheme.
constexpr std::array<const char*, 6> kSchemes{"http", "https", "ftp", "file", "mailto", "ms-settings"};

} // namespace

UrlRecorder::UrlRecorder(bool open) : m_open(open)
{
    TakeOver();
}

UrlRecorder::~UrlRecorder()
{
    Release();
}

void UrlRecorder::Record(const QUrl& url)
{
    const QString text = QString::fromLatin1(url.toEncoded());
    m_urls.append(text);
    if (m_observer)
        m_observer(text);
    if (m_open)
    {
        Release(); // or the address comes back here
        QDesktopServices::openUrl(url);
        TakeOver();
    }
}

void UrlRecorder::TakeOver()
{
    for (const char* scheme : kSchemes)
        QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "Record");
}

void UrlRecorder::Release()
{
    for (const char* scheme : kSchemes)
        QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
}
