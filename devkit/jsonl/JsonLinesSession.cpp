#include "devkit/jsonl/JsonLinesSession.h"

#include "devkit/core/Host.h"
#include "devkit/core/Session.h"
#include "devkit/process/StandardStreams.h"

#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace
{

constexpr int kLongestLine = 16 * 1024 * 1024;
constexpr std::size_t kMostWaiting = 1000; // requests that are read before the first of them is answered

} // namespace

JsonLinesSession::JsonLinesSession(Host& host, StandardOutput& output, const QString& page)
    : m_host(host), m_output(output), m_session(Session::Open(host, *this)), m_lines(kLongestLine),
      m_input([this] { OnInput(); })
{
    QVariantMap hello = Session::Greeting();
    hello.insert(QStringLiteral("event"), QStringLiteral("hello"));
    if (!page.isEmpty())
        hello.insert(QStringLiteral("page"), page);
    Receive(hello);
}

JsonLinesSession::~JsonLinesSession()
{
    m_session->Close();
}

void JsonLinesSession::OnInput()
{
    for (m_held = true; m_session->Waiting() < kMostWaiting && !m_host.IsQuitting();)
    {
        const auto piece = m_input.Take();
        if (!piece)
        {
            m_held = false;
            return;
        }
        if (piece->isEmpty())
            m_lines.Finish();
        m_lines.Feed(*piece);
        for (auto line = m_lines.Take(); line && !m_host.IsQuitting(); line = m_lines.Take())
            if (line->tooLong || !line->text.trimmed().isEmpty())
                Submit(*line);
        if (piece->isEmpty())
            m_session->EndInput();
    }
}

void JsonLinesSession::Submit(const LineSplitter::Line& line)
{
    if (line.tooLong)
        m_session->Refuse(QStringLiteral("it is longer than %1 bytes").arg(kLongestLine));
    else
        m_session->SubmitString(line.text);
}

void JsonLinesSession::Receive(const QVariantMap& message)
{
    if (!m_output.Write(StringOf(message) + '\n') && !m_host.IsQuitting())
    {
        const QString error = m_output.Error();
        if (!error.isEmpty())
            std::fprintf(stderr, "veridan-host: Standard output cannot be written: %s.\n", qUtf8Printable(error));
        m_host.RequestQuit(error.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    if (m_held && m_session->Waiting() < kMostWaiting / 2)
    {
        m_held = false;
        QTimer::singleShot(0, &m_input, [this] { OnInput(); });
    }
}
