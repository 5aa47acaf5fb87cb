#include "platform/DebugOutput.h"

#include "text/Utf.h"

#include <cstdio>
#include <cstdlib>

namespace Platform
{

namespace
{

class StandardError : public DebugOutput
{
public:
    void Write(const wchar_t* text) override
    {
        if (m_on)
            std::fputs(Text::ToUtf8(text).c_str(), stderr);
    }

private:
    const bool m_on = std::getenv("VERIDAN_DEBUG_OUTPUT") != nullptr;
};

} // namespace

template <>
DebugOutput& System<DebugOutput>()
{
    return Detail::NoDestructor<StandardError>();
}

} // namespace Platform
