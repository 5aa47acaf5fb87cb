#include "devkit/core/Elevation.h"

#include "devkit/core/Sessions.h"
#include "devkit/strata/OrbStrataControl.h"

#include <QThread>
#include <QTimer>

Elevation::Elevation(Sessions& sessions) : m_sessions(sessions)
{
    OrbStrataControl_SetElevationHandler(&Elevation::OnPrompt, this);
}

Elevation::~Elevation()
{
    OrbStrataControl_SetElevationHandler(nullptr, nullptr);
}

QString Elevation::Answer(quint64 prompt, bool accept)
{
    const auto found = m_prompts.find(prompt);
    if (found == m_prompts.end())
        return QStringLiteral("There is no prompt %1.").arg(prompt);
    found->second->End(accept);
    return {};
}

void Elevation::OnWatchesChanged()
{
    if (m_sessions.WatchedAny(Topic::Elevation))
        return;
    for (const auto& [number, prompt] : m_prompts)
        prompt->End(false);
}

bool NL_SUITE_CALL Elevation::OnPrompt(void* context, const wchar_t* client)
{
    auto* const self = static_cast<Elevation*>(context);
    const QString name = client ? QString::fromWCharArray(client) : QString();
    if (QThread::currentThread() == self->thread())
        return self->Decide(name);
    bool accepted = false;
    QMetaObject::invokeMethod(
        self, [self, &name, &accepted] { accepted = self->Decide(name); }, Qt::BlockingQueuedConnection);
    return accepted;
}

bool Elevation::Decide(const QString& client)
{
    return m_mode == Mode::Accept || (m_mode == Mode::Ask && Ask(client));
}

bool Elevation::Ask(const QString& client)
{
    constexpr int kPatienceMs = 2 * 60 * 1000;
    if (!m_sessions.WatchedAny(Topic::Elevation))
        return false;
    Prompt prompt;
    const quint64 number = ++m_last;
    m_prompts.emplace(number, &prompt);
    QTimer::singleShot(kPatienceMs, &prompt.loop, &QEventLoop::quit);
    m_sessions.Publish(Topic::Elevation, {},
                       {{QStringLiteral("event"), QStringLiteral("elevation")},
                        {QStringLiteral("prompt"), number},
                        {QStringLiteral("client"), client}});
    if (!prompt.over) // an answer may have come while the event was told
        prompt.loop.exec();
    m_prompts.erase(number);
    return prompt.accepted;
}
