#pragma once

#include "devkit/core/CommandTable.h"
#include "devkit/core/InputReader.h"
#include "devkit/core/LineSplitter.h"
#include "devkit/core/VariableHub.h"

class Host;

/// Drives a host by JSON Lines: requests from standard input, one after the other, answers and events to standard
/// output. Ends the application at the end of input or when nobody reads the answers any more.
class JsonLinesSession
{
public:
    explicit JsonLinesSession(Host& host);
    ~JsonLinesSession();
    JsonLinesSession(const JsonLinesSession&) = delete;
    JsonLinesSession& operator=(const JsonLinesSession&) = delete;

private:
    void OnInput();
    void AnswerLines();
    void AnswerLine(const LineSplitter::Line& line);
    void OnChange(const VariableChange& change);
    void Send(const QVariantMap& message);

    Host& m_host;
    const CommandTable m_commands;
    LineSplitter m_lines;
    bool m_busy = false;
    InputReader m_input; // last: it calls back
};
