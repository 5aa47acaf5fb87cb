#pragma once

#include <cstddef>
#include <memory>
#include <new>

namespace NlOrbLogging
{

/// Room for a text, on the stack up to `Inline` characters. Never throws.
template <class Char, std::size_t Inline>
class StringBuffer
{
public:
    /// Makes room for `size` characters; what was there is lost. False: there is no memory.
    bool Reserve(std::size_t size)
    {
        if (size > Inline)
        {
            m_heap.reset(new (std::nothrow) Char[size]);
            m_data = m_heap.get();
        }
        return m_data != nullptr;
    }

    Char* Data() { return m_data; }

private:
    Char m_inline[Inline];
    std::unique_ptr<Char[]> m_heap;
    Char* m_data = m_inline;
};

} // namespace NlOrbLogging
