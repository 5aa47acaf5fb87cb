#pragma once

#include "devkit/process/StandardStreams.h"

#include <QObject>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

/// Reads standard input on a thread of its own and hands it over on the UI thread, one piece at a time: the next piece
/// is read when the last one has been taken, so that a fast writer never fills the memory.
class InputReader : public QObject
{
    Q_OBJECT
public:
    /// `onInput` is called on the UI thread, through the event loop, when Take() has something to give.
    explicit InputReader(std::function<void()> onInput);
    ~InputReader() override;

    /// A piece of input, empty at the end of input; nothing when none is there yet.
    std::optional<QByteArray> Take();

private:
    void Run();

    StandardInput m_input;
    std::mutex m_mutex;
    std::condition_variable m_taken;
    std::optional<QByteArray> m_piece;
    bool m_stopping = false;
    std::function<void()> m_onInput;
    std::thread m_thread;
};
