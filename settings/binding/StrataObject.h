#pragma once

#include "delay_load/OrbStrataApi.h"

#include <cstdint>
#include <memory>
#include <string>

namespace StrataSettings
{

/// One store object: a record of named fields, or an array of records. Either owns it and deletes it in the end, or
/// looks at a record inside an array, which must outlive it.
class StrataObject
{
public:
    /// Takes the object over; null is an object that no field can be read from.
    explicit StrataObject(OrbStrataObject* owned) : m_owned(owned), m_object(owned) {}

    static StrataObject Record() { return StrataObject(OrbStrata_CreateObject()); }
    static StrataObject Array() { return StrataObject(OrbStrata_CreateArray()); }

    const OrbStrataObject* Raw() const noexcept { return m_object; }

    /// Reads a field. False, after a log line, when it is missing, of another type or cannot be read; `value` is
    /// unchanged then.
    bool Get(const wchar_t* field, bool& value) const;
    bool Get(const wchar_t* field, std::int64_t& value) const;
    bool Get(const wchar_t* field, std::string& value) const; // UTF-8

    /// Whether every field that was asked for so far could be read.
    bool ReadWhole() const noexcept { return m_readWhole; }

    /// Why a field or the records could not be read, although they may be there; else 0.
    OrbStrataResult Failure() const noexcept { return m_failure; }

    /// Writes a field of an owned record. False when the store library refuses it.
    bool Set(const wchar_t* field, bool value);
    bool Set(const wchar_t* field, std::int64_t value);
    bool Set(const wchar_t* field, const std::string& value);

    /// Appends a copy of the record to an owned array.
    bool PushBack(const StrataObject& record);

    /// Calls `visit(const StrataObject&)` for each record in order; false, without a call, when this is no array or its
    /// records cannot be reached.
    template <class Visit>
    bool ForEach(Visit&& visit) const
    {
        if (!m_object || !OrbStrata_ObjectIsArray(m_object))
            return false;
        OrbStrataIterator position = OrbStrata_ArrayBegin(m_object);
        const OrbStrataIterator end = OrbStrata_ArrayEnd(m_object);
        if (!position != !end)
        {
            m_failure = ORB_STRATA_STORE_FAILED;
            return false;
        }
        for (; position != end; ++position)
            visit(StrataObject(Borrowed{OrbStrata_IteratorGetAssociatedObject(position)}));
        return true;
    }

private:
    struct Deleter
    {
        void operator()(OrbStrataObject* object) const noexcept { OrbStrata_DeleteObject(object); }
    };
    struct Borrowed
    {
        const OrbStrataObject* object;
    };

    explicit StrataObject(Borrowed borrowed) : m_object(borrowed.object) {}

    void Missed(OrbStrataResult result) const noexcept;

    std::unique_ptr<OrbStrataObject, Deleter> m_owned;
    const OrbStrataObject* m_object;
    mutable bool m_readWhole = true;
    mutable OrbStrataResult m_failure = ORB_STRATA_SUCCESS;
};

} // namespace StrataSettings
