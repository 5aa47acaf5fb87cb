#include "devkit/core/InputReader.h"

#include <utility>

InputReader::InputReader(std::function<void()> onInput)
    : m_onInput(std::move(onInput)), m_thread(&InputReader::Run, this)
{}

InputReader::~InputReader()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_stopping = true;
    }
    m_taken.notify_one();
    m_input.Cancel();
    m_thread.join();
}

std::optional<QByteArray> InputReader::Take()
{
    std::optional<QByteArray> piece;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        piece.swap(m_piece);
    }
    m_taken.notify_one();
    return piece;
}

void InputReader::Run()
{
    for (bool more = true; more;)
    {
        QByteArray bytes = m_input.Read();
        more = !bytes.isEmpty();
        std::unique_lock<std::mutex> lock(m_mutex);
        m_taken.wait(lock, [this] { return m_stopping || !m_piece; });
        if (m_stopping)
            return;
        m_piece = std::move(bytes);
        QMetaObject::invokeMethod(
            this, [this] { m_onInput(); }, Qt::QueuedConnection);
    }
}
