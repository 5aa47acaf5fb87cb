#pragma once

#include "devkit/core/Client.h"
#include "devkit/core/InputReader.h"
#include "devkit/core/LineSplitter.h"

#include <memory>

class Host;
class Session;
class StandardOutput;

/// Drives a host by JSON Lines: requests from standard input, answers and events to standard output. Ends the host at
/// the end of input or when nobody reads the answers any more.
class JsonLinesSession : public Client
{
public:
    /// `page` is the page's address, empty where none is served.
    JsonLinesSession(Host& host, StandardOutput& output, const QString& page);
    ~JsonLinesSession() override;

    void Receive(const QVariantMap& message) override;

private:
    void OnInput();
    void Submit(const LineSplitter::Line& line);

    Host& m_host;
    StandardOutput& m_output;
    const std::shared_ptr<Session> m_session;
    LineSplitter m_lines;
    bool m_held = false; // there may be input that waits for answers
    InputReader m_input; // last: it calls back
};
