#pragma once

#include "devkit/core/Result.h"
#include "devkit/core/StoreEntry.h"
#include "suite/OrbStrata.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

/// The settings store as the product sees it: every key of every scope.
///
/// A scope is "system", "user" (the user whose settings the plug-in shows) or a SID.
class StoreAccess
{
public:
    static constexpr const char* kSystemSid = "S-1-5-18";

    using Entries = std::map<QString, StoreEntry>;

    /// One of each process: it sets up the store of the process.
    StoreAccess(const QString& storeFile, QString userSid);
    ~StoreAccess();
    StoreAccess(const StoreAccess&) = delete;
    StoreAccess& operator=(const StoreAccess&) = delete;

    /// An entry that holds nothing where there is none.
    Result<StoreEntry> Get(const QString& scope, const QString& key);
    /// The entries of the keys that begin so.
    Result<Entries> List(const QString& scope, const QString& prefix);
    /// Writes the value; the constraint word stays.
    Answer Set(const QString& scope, const QString& key, const StoreEntry& entry);
    /// Writes every entry with its constraint word, or none of them.
    Answer Write(const QString& scope, const Entries& entries);
    /// Writes the values of the keys that have none, all in one; constraint words stay. How many were written.
    Answer WriteIfAbsent(const QString& scope, const Entries& entries);
    Answer Remove(const QString& scope, const QString& key);
    Answer Constrain(const QString& scope, const QString& key, quint32 constraints);

    /// Tells of every change of a scope while it lives, also of those made by this object. `onChange` is called on a
    /// thread of the store's; an entry without a type tells of a removal.
    class Watch
    {
    public:
        using OnChange = std::function<void(const QString& key, bool removed, const StoreEntry& entry)>;
        ~Watch();
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;

    private:
        friend StoreAccess;
        Watch() = default;
        static void NL_SUITE_CALL Tell(void* context, int32_t changeType, const OrbStrataEntry* entry);

        OnChange m_onChange;
        OrbStrataHandle m_handle = nullptr;
        OrbStrataSubscription m_subscription = nullptr;
    };
    Result<std::shared_ptr<Watch>> WatchChanges(const QString& scope, const QString& prefix, Watch::OnChange onChange);

    /// The scope's SID as the store takes it. An error for what names no scope.
    Result<QString> SidOf(const QString& scope) const;
    /// "system" and "user" where they apply, else the SID.
    QString ScopeOf(const QString& sid) const;

private:
    struct Target
    {
        OrbStrataHandle handle = nullptr;
        std::wstring key;
    };

    Result<OrbStrataHandle> Open(const QString& scope) const;
    Result<Target> Locate(const QString& scope, const QString& key);
    /// Calls the store with the scope's handle and the key.
    template <class Call>
    Answer Do(const QString& scope, const QString& key, Call&& call);

    const QString m_userSid;
    std::map<QString, OrbStrataHandle> m_handles; // by SID
};
