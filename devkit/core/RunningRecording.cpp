#include "devkit/core/RunningRecording.h"

#include "devkit/core/Host.h"
#include "devkit/core/Json.h"
#include "devkit/core/Recording.h"
#include "devkit/core/Session.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace
{

constexpr int kMostBytes = 64 * 1024 * 1024; // in memory

} // namespace

RunningRecording::RunningRecording(Host& host, VariableHub::Warn warn) : m_host(host), m_warn(std::move(warn)) {}

RunningRecording::~RunningRecording() = default;

QString RunningRecording::Start(const QString& file)
{
    if (IsOn())
        return QStringLiteral("There is a recording already; end it first.");
    m_host.storeWrites.Settle(); // what came before is not part of it
    const Result<QVariantMap> head = Head();
    if (!head.Ok())
        return head.error;
    m_lines = 0;
    m_text.clear();
    m_error.clear();
    m_file.setFileName(file);
    if (!file.isEmpty() && !m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return QStringLiteral("The recording \"%1\" cannot be written: %2.")
            .arg(QDir::toNativeSeparators(file), m_file.errorString());
    Write(head.value);
    m_recorder = std::make_unique<Recorder>(m_host, [this](const QVariantMap& line) { Write(line); });
    m_host.feeds.TellHost();
    return {};
}

Answer RunningRecording::Stop()
{
    if (!IsOn())
        return Answer::Failure(QStringLiteral("There is no recording."));
    m_recorder.reset();
    m_host.feeds.TellHost();
    Write({{Recording::kEnd, true}});
    const bool hasFile = m_file.isOpen();
    m_file.close();
    const QVariant where = hasFile ? QVariant(QDir::toNativeSeparators(QFileInfo(m_file).absoluteFilePath()))
                                   : QVariant(QString::fromUtf8(std::exchange(m_text, {})));
    return {QVariantMap{{QStringLiteral("lines"), m_lines},
                        {hasFile ? QStringLiteral("file") : QStringLiteral("text"), where}},
            hasFile ? m_error : QString()};
}

/// What a fresh host lacks to be as this one is.
Result<QVariantMap> RunningRecording::Head() const
{
    QVariantMap head = Recording::Format();
    QVariantMap store;
    for (const char* const scope : {"system", "user"})
    {
        const auto entries = m_host.store.List(QLatin1String(scope), {});
        if (!entries.Ok())
            return Result<QVariantMap>::Failure(entries.error);
        QVariantMap list;
        for (const auto& [key, entry] : entries.value)
        {
            QVariantMap described = entry.Describe();
            described.remove(QStringLiteral("found"));
            list.insert(key, described);
        }
        if (!list.isEmpty())
            store.insert(QLatin1String(scope), list);
    }
    QVariantMap variables;
    for (const auto& [name, view] : m_host.hub.Variables({}))
        if (view.value.isValid())
            variables.insert(name, view.value);
    if (!store.isEmpty())
        head.insert(Recording::kStore, store);
    if (!variables.isEmpty())
        head.insert(Recording::kVariables, variables);
    head.insert(Recording::kElevation, m_host.elevation.ModeName());
    head.insert(Recording::kLoaded, m_host.plugIn.IsLoaded());
    return {head, {}};
}

void RunningRecording::Write(const QVariantMap& line)
{
    if (!m_error.isEmpty())
        return;
    const QByteArray text = Json::Write(line) + '\n';
    ++m_lines;
    if (!m_file.isOpen() && m_text.size() + text.size() > kMostBytes)
        m_error = QStringLiteral("The recording became too long for the memory; record into a file.");
    else if (!m_file.isOpen())
        m_text += text;
    else if (m_file.write(text) != text.size())
        m_error = QStringLiteral("The recording \"%1\" could not be written further: %2.")
                      .arg(QDir::toNativeSeparators(m_file.fileName()), m_file.errorString());
    if (!m_error.isEmpty())
        m_warn(m_error);
}
