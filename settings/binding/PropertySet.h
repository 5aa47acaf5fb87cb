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

    /// Adds an element. Stored, or Unchanged when an equivalent element is there already.
    SetResult Insert(const Item& item)
    {
        return this->ChangeStored([&item](std::set<Item>& items) { return items.insert(item).second; });
    }

    /// Removes the element equivalent to `item`. Stored, or Unchanged when there is none.
    SetResult Erase(const Item& item)
    {
        return this->ChangeStored([&item](std::set<Item>& items) { return items.erase(item) != 0; });
    }

    /// Removes all elements, those that could not be read among them. Unchanged when there are none.
    SetResult Clear()
    {
        return this->Change([this](std::set<Item>& items) {
            const bool holdsSome = !items.empty() || this->m_reading != Reading::Whole;
            items.clear();
            return holdsSome;
        });
    }

    /// The whole set is saved, and would replace elements that were never read: one that reads as empty although
    /// something is stored is not believed at once.
    bool IsUnread() const override
    {
        const std::lock_guard lock(this->m_mutex);
        return this->m_reading == Reading::Failed || (this->m_reading == Reading::Part && this->m_value.empty() &&
                                                      this->m_state != ModificationState::Changed);
    }

protected:
    OrbStrataResult Read(OrbStrataHandle handle) override
    {
        std::set<Item> items;
        bool whole = true;
        const OrbStrataResult result = StoreCodec<std::set<Item>>::Read(handle, this->GetKey().c_str(), items, whole);
        if (result == ORB_STRATA_SUCCESS)
            this->Hold(std::move(items));
        if (!whole)
            this->m_reading = Reading::Part;
        return result;
    }

    void TakeString(const char* objectString) override
    {
        if (!objectString)
            return;
        const StrataObject object(OrbStrata_CreateObjectFromString(objectString));
        if (!object.Raw() || !OrbStrata_ObjectIsArray(object.Raw()))
            return;
        const auto content = StoreCodec<std::set<Item>>::FromArray(object);
        if (content.result != ORB_STRATA_SUCCESS)
            return;
        this->Take(content.items, ModificationState::InStep);
        this->m_reading = content.whole ? Reading::Whole : Reading::Part;
        this->m_constraintsMissing = true; // the text does not tell them
    }
};

} // namespace StrataSettings
