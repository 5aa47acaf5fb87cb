#pragma once

#include "devkit/core/Recorder.h"
#include "devkit/core/Result.h"
#include "devkit/core/VariableHub.h"

#include <QFile>

#include <memory>

/// The one recording that a host may be making, into a file or into memory. Every line is with the system as soon as it
/// is made: the end of the host, however it comes, loses the last one at most.
class RunningRecording
{
public:
    RunningRecording(Host& host, VariableHub::Warn warn);
    ~RunningRecording();
    RunningRecording(const RunningRecording&) = delete;
    RunningRecording& operator=(const RunningRecording&) = delete;

    /// Without a file into memory. Why not, else empty: there is one already, the file exists or cannot be written, or
    /// what the store holds cannot be read.
    QString Start(const QString& file);

    /// {"lines", "text"}, or with a file {"lines", "file"}. An error where the file could not be written to the end, or
    /// where there is no recording. A text that became too long for the memory is cut.
    Answer Stop();

    bool IsOn() const { return m_recorder != nullptr; }

private:
    Result<QVariantMap> Head() const;
    void Write(const QVariantMap& line);

    Host& m_host;
    const VariableHub::Warn m_warn;
    QFile m_file;
    QByteArray m_text; // where there is no file
    int m_lines = 0;
    QString m_error;
    std::unique_ptr<Recorder> m_recorder;
};
