#include "fuzz/Surroundings.h"

#include "logging/Log.h"
#include "platform/Format.h"

#include <array>
#include <memory>

namespace
{

/// Formatting reads what the product passes on of its input.
class FormattingLogger : public NlOrbLogging::Logger
{
public:
    FormattingLogger() { m_threshold = NlOrbLogging::Verbose; }

    void InitializeA(const char*, const char*, int, unsigned) override {}
    void Initialize(const wchar_t*, const wchar_t*, int, unsigned) override {}
    void Shutdown() override {}
    void Flush() override {}

    void LogV(int, const wchar_t* format, va_list arguments) override
    {
        std::array<wchar_t, 4096> line;
        Platform::Format(line.data(), line.size(), format, arguments);
    }

    void LogVA(int, const char* format, va_list arguments) override
    {
        std::array<char, 4096> line;
        Platform::Format(line.data(), line.size(), format, arguments);
    }
};

} // namespace

Surroundings::Surroundings(int& argc, char** argv) : m_application(argc, argv)
{
    NlOrbLogging::ReplaceLogger(std::make_unique<FormattingLogger>());
}
