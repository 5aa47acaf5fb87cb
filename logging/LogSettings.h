#pragma once

#include <cstdint>
#include <string>

namespace NlOrbLogging
{

/// The registry's settings of one module's log.
class LogSettings
{
public:
    LogSettings(std::wstring component, std::wstring module);

    /// A number from the module's key, else from the component's, else from the log facility's own; `fallback` when
    /// none has it. 0xFFFFFFFF counts as absent.
    std::uint32_t ReadDword(const wchar_t* value, std::uint32_t fallback) const;

private:
    const std::wstring m_component;
    const std::wstring m_module;
};

/// The folder that holds all logs of a kind, "...\Norlane"; empty when there is none.
std::wstring LogRoot(bool perUser, bool lowIntegrity);

} // namespace NlOrbLogging
