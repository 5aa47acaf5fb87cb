#pragma once

#include "devkit/datapipeline/OrbDpControl.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace DataPipeline
{

/// Keeps every event for whoever asks. Thread-safe.
class EventRecorder
{
public:
    /// Made at its first use, and gone when the library is unloaded.
    static EventRecorder& Instance();

    /// Answers the call's result: 0, or an error number, where nothing is recorded.
    int32_t Record(int32_t code, const char* name, const wchar_t* payload, bool major);
    /// The visitor may call the library.
    void Visit(OrbDpEventVisitor visitor, void* context);

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
};

} // namespace DataPipeline
