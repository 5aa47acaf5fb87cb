#pragma once

#include "settings/binding/Property.h"

#include <set>

namespace StrataSettings
{

/// A setting whose value is a set of records, ordered by the element class. The whole set is read and written at once.
template <class Item>
class PropertySet : public Property<std::set<Item>>
{
public:
    PropertySet(Model* parent, Key key) : Property<std::set<Item>>(parent, std::move(key), {}) {}

    /// Changes the set in place, as Change(), from what the store holds: where the last load failed, it is tried again,
    /// since the whole set is saved and would replace elements that were never read. Unreadable when it fails again.
    template <class Edit>
    SetResult ChangeElements(Edit&& edit)
    {
        if (this->ReadFailed())
            this->Load();
        return this->ReadFailed() ? SetResult::Unreadable : this->Change(std::forward<Edit>(edit));
    }

    /// Adds an element. Stored, or Unchanged when an equivalent element is there already.
    SetResult Insert(const Item& item)
    {
        return ChangeElements([&item](std::set<Item>& items) { return items.insert(item).second; });
    }

    /// Removes the element equivalent to `item`. Stored, or Unchanged when there is none.
    SetResult Erase(const Item& item)
    {
        return ChangeElements([&item](std::set<Item>& items) { return items.erase(item) != 0; });
    }

protected:
    OrbStrataResult Read(OrbStrataHandle handle) override
    {
        return StoreCodec<std::set<Item>>::Read(handle, this->GetKey().c_str(), this->m_value, this->m_readWhole);
    }

    void TakeText(const char* objectText) override
    {
        if (!objectText)
            return;
        const StrataObject object(OrbStrata_CreateObjectFromString(objectText));
        if (!object.Raw() || !OrbStrata_ObjectIsArray(object.Raw()))
            return;
        bool whole = true;
        this->Take(StoreCodec<std::set<Item>>::FromArray(object, whole), ModificationState::InStep);
        this->m_readWhole = whole;
    }
};

} // namespace StrataSettings
