#pragma once

#include "devkit/datapipeline/OrbDpControl.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace DataPipeline
{

/// Keeps every event for whoever asks, unless it was told to let calls fail. Thread-safe.
class EventRecorder
{
public:
    /// Made at its first use, and gone when the library is unloaded.
    static EventRecorder& Instance();

    /// Answers the call's result: 0, or what the fault says; then nothing is recorded.
    int32_t Record(int32_t code, const char* name, const wchar_t* payload, bool major);
    /// The visitor may call the library.
    void Visit(OrbDpEventVisitor visitor, void* context);
    void SetFault(int32_t code, uint32_t count);

private:
    struct Event
    {
        int32_t code;
        std::string name;
        std::optional<std::wstring> payload;
        bool major;
    };

    std::mutex m_mutex;
    std::vector<Event> m_events;
    int32_t m_fault = 0;
    uint32_t m_faultsLeft = 0; ///< 0: the fault does not end
};

} // namespace DataPipeline
