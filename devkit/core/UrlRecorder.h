#pragma once

#include <QObject>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <utility>

/// Takes over the addresses that the plug-in asks the desktop to open.
class UrlRecorder : public QObject
{
    Q_OBJECT
public:
    /// `open`: addresses are also handed to the desktop.
    explicit UrlRecorder(bool open);
    ~UrlRecorder() override;

    QStringList Urls() const { return m_urls; }
    void SetObserver(std::function<void(const QString& url)> observer) { m_observer = std::move(observer); }

    Q_SLOT void Record(const QUrl& url);

private:
    void TakeOver();
    void Release();

    const bool m_open;
    QStringList m_urls;
    std::function<void(const QString& url)> m_observer;
};
