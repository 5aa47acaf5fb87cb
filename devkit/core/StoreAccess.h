#pragma once

#include "devkit/core/Result.h"
#include "suite/OrbStrata.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

/// The settings store as the product and the test see it: every key of every scope, and what was written.
///
/// A scope is "system", "user" (the user whose settings the plug-in shows) or a SID. Values are those of JSON.
class StoreAccess
{
public:
    static constexpr const char* SystemSid = "S-1-5-18";

    struct Write
    {
        quint64 sequence; // counted from 1
        QString scope;
        QString key;
        bool byPlugIn;
    };

    /// One of each process: it sets up the store of the process.
    StoreAccess(const QString& storeFile, QString userSid);
    ~StoreAccess();
    StoreAccess(const StoreAccess&) = delete;
    StoreAccess& operator=(const StoreAccess&) = delete;

    /// {"found", "type", "value", "constraints"}
    Answer Get(const QString& scope, const QString& key);
    /// Key to what Get() gives, for the keys that begin so.
    Answer List(const QString& scope, const QString& prefix);
    Answer Set(const QString& scope, const QString& key, const QString& type, const QVariant& value);
    Answer Remove(const QString& scope, const QString& key);
    Answer Constrain(const QString& scope, const QString& key, quint32 constraints);

    /// The writes that reached the store in this run, in order.
    std::vector<Write> Writes() const;

    /// Waits until all changes have been told to their listeners, and runs the event loop until it is idle, again and
    /// again while that leads to further writes. False: the time is over.
    bool Settle(int timeoutMs);

private:
    struct Target
    {
        OrbStrataHandle handle = nullptr;
        std::wstring key;
    };

    Result<Target> Locate(const QString& scope, const QString& key);
    QString ScopeOf(const QString& sid) const;
    std::size_t WriteCount() const;
    static void NL_SUITE_CALL OnWrite(void* context, const char* sid, const wchar_t* key, bool byPlugIn);

    const QString m_userSid;
    std::map<QString, OrbStrataHandle> m_handles; // by SID
    mutable std::mutex m_mutex;                   // guards m_writes
    std::vector<Write> m_writes;
};
