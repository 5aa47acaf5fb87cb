#pragma once

#include "delay_load/OrbStrataApi.h"
#include "logging/FunctionLog.h"
#include "settings/binding/Key.h"

#include <atomic>
#include <cstdint>
#include <mutex>

namespace StrataSettings
{

class Model;

enum class ModificationState : std::uint32_t
{
    InStep = 0,  ///< As the store has it.
    Default = 1, ///< The default; the store is not known to hold a value.
    Changed = 2  ///< Changed by the plug-in and not yet saved.
};

/// What the last read said of the store.
enum class Reading : std::uint8_t
{
    Whole,    ///< What was read is what the store holds, or it holds nothing.
    Part,     ///< The store holds more than could be taken over.
    Unusable, ///< The store holds a value of another type: the default stands for it.
    Failed    ///< Unknown: what is held is older.
};

enum class SetResult
{
    Stored,    ///< Taken, and marked changed.
    Unchanged, ///< Equal to what is held already.
    Enforced,  ///< Refused: the value is locked by policy.
    Unreadable ///< Refused: the stored value, which the change builds on, cannot be read.
};

/// One setting: everything but its value. Knows its key, finds its store handle and moves its value between the store
/// and itself; the value and the typed store calls are Property<T>'s.
///
/// Any thread may call any operation. The property's mutex guards value and state and serialises its store calls; the
/// constraint word is atomic. Nothing else is called under the mutex.
class PropertyBase
{
public:
    PropertyBase(const PropertyBase&) = delete;
    PropertyBase& operator=(const PropertyBase&) = delete;
    virtual ~PropertyBase() = default;

    /// Takes value and constraints from the store. A value that the store lacks or that cannot be read stays as it is;
    /// so does one that was changed and is not saved, unless it has become enforced.
    virtual void Load(OrbStrataHandle handle);
    /// As above with the handle of the tree that the property stands in, or its own when it stands alone.
    virtual void Load();

    /// Writes a changed value that is not enforced. False when the store refused it; it stays changed then, so that the
    /// next save tries again.
    virtual bool Save(OrbStrataHandle handle);
    virtual bool Save();

    /// Takes a value that came from the store, which is no change of the plug-in's. `value` points to the property's
    /// value type; null is ignored.
    virtual void Update(const void* value) = 0;
    /// Takes a constraint word that came from the store; null is ignored.
    virtual void UpdateConstraints(const std::uint32_t* constraints);

protected:
    /// The typed store calls, under the mutex: `Read` takes the value only when it answers 0, and sets m_reading to
    /// Part when there was more to take.
    virtual OrbStrataResult Read(OrbStrataHandle handle) = 0;
    virtual OrbStrataResult Write(OrbStrataHandle handle) = 0;

public:
    /// As Load(), but where the store holds nothing by now the default comes back, unconstrained. `objectString`, where
    /// it is not null, is a structured value's text and serves when the store cannot be read at this moment. Unlike a
    /// pushed value this can never bring back a value that a save of this property has replaced in the meantime.
    virtual void Refresh(OrbStrataHandle handle, const char* objectString) = 0;

    /// Takes value, constraints and state of a property of the same type.
    virtual void CopyFrom(const PropertyBase& other) = 0;

    /// Whether it has to be loaded again before anything may build on it.
    virtual bool IsUnread() const { return ReadFailed(); }

    /// Whether its value or its constraint word could not be read and is worth another try.
    bool IsMissing() const;

    /// Whether loading has changed value or constraint word since the last call.
    bool TakeNews();

    const Key& GetKey() const noexcept { return m_key; }
    bool IsEnforced() const noexcept { return (Constraints() & ORB_STRATA_CONSTRAINT_ENFORCED) != 0; }
    std::uint32_t Constraints() const noexcept { return m_constraints.load(); }
    ModificationState State() const;

    /// False when the last load could not read the stored value, or not all of it: only a change of the value may then
    /// overwrite what is stored.
    bool WasReadWhole() const;

    /// Whether the last load failed and the value was not replaced since: what the store holds is unknown.
    bool ReadFailed() const;

    /// As after a failed load, where there is nothing to load from.
    void MarkReadFailed();

    /// Marks the value changed, so that the next save writes it even where it is the default.
    void MarkChanged();

    /// The store handle of a property that stands alone.
    void SetHandle(OrbStrataHandle handle) noexcept { m_ownHandle = handle; }

protected:
    /// `typeName` is what the log calls the value's type.
    PropertyBase(Model* parent, Key key, const wchar_t* typeName);

    OrbStrataHandle FindHandle() const noexcept;

    /// Load with the mutex held. Answers what the typed read answered; 0 where an unsaved change was kept.
    OrbStrataResult LoadLocked(OrbStrataHandle handle);

    /// The default in place of the value, under the mutex.
    virtual void TakeDefault() = 0;
    void TakeConstraints(std::uint32_t constraints);

private:
    void LoadConstraints(OrbStrataHandle handle);
    MethodLog Log(const wchar_t* function) const;

    const Key m_key;
    Model* const m_parent;
    const wchar_t* const m_typeName;
    OrbStrataHandle m_ownHandle = nullptr;

protected:
    std::atomic<std::uint32_t> m_constraints{0};
    ModificationState m_state = ModificationState::Default;
    Reading m_reading = Reading::Whole;
    bool m_constraintsMissing = false;
    bool m_news = false;
    mutable std::mutex m_mutex;
};

} // namespace StrataSettings
