#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QUrl>

#include <string>
#include <vector>

/// Takes what would be opened, web pages and files, as long as it lives.
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    UrlCatcher()
    {
        for (const char* scheme : {"http", "https", "file"})
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "Open");
    }
    ~UrlCatcher() override
    {
        for (const char* scheme : {"http", "https", "file"})
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    }

    const std::vector<std::string>& Opened() const { return m_opened; }

public Q_SLOTS:
    void Open(const QUrl& url) { m_opened.push_back(url.toString().toStdString()); }

private:
    std::vector<std::string> m_opened;
};
