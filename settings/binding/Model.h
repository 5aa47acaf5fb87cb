#pragma once

#include "delay_load/OrbStrataApi.h"

#include <atomic>
#include <map>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <variant>
#include <vector>

namespace StrataSettings
{

class PropertyBase;

/// A node of a settings tree: holds properties and child models, which register with it as they are constructed. Every
/// walk goes through them depth first, in the order of their declaration. The tree's shape is fixed once it is built;
/// the properties look after their own locks.
class Model
{
public:
    Model() = default;
    explicit Model(Model* parent);
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;
    virtual ~Model() = default;

    virtual void Load(OrbStrataHandle handle);

    /// Saves what is changed and not enforced. Goes on after a failure; false when the store refused any property.
    virtual bool Save(OrbStrataHandle handle);

    /// The second step of loading a scope that may write constraints. Groups with constraints of their own override it.
    virtual void ApplyConstraints(OrbStrataHandle handle);

    /// The property with this key anywhere in the whole tree, or null.
    PropertyBase* Find(std::wstring_view key) const;

    /// The child model of exactly this run-time type, or null. Direct children only.
    Model* FindChild(const std::type_info& type) const;

    /// Marks every property changed: the next save writes the whole tree.
    void MarkChanged();

    /// Takes value, constraints and state of every property of a tree of the same shape.
    void CopyFrom(const Model& other);

    /// Calls `visit(PropertyBase&)` or `visit(Model&)` for each direct child.
    template <class Visit>
    void ForEachChild(Visit&& visit) const
    {
        for (const Node& node : m_nodes)
            std::visit([&visit](auto* child) { visit(*child); }, node);
    }

    /// Calls `visit(PropertyBase&)` for every property of the tree.
    template <class Visit>
    void ForEachProperty(Visit&& visit) const
    {
        ForEachChild([&visit](auto& child) {
            if constexpr (std::is_same_v<decltype(child), Model&>)
                child.ForEachProperty(visit);
            else
                visit(child);
        });
    }

    /// The handle that properties without one of their own use; meaningful in the top-most node. Any thread.
    void SetHandle(OrbStrataHandle handle) noexcept { m_handle = handle; }
    OrbStrataHandle FindHandle() const noexcept { return Root().m_handle; }

    void Register(PropertyBase& property);

private:
    using Node = std::variant<PropertyBase*, Model*>;

    const Model& Root() const noexcept;

    Model* const m_parent = nullptr;
    std::atomic<OrbStrataHandle> m_handle{nullptr};
    std::vector<Node> m_nodes;
    std::map<std::wstring_view, PropertyBase*> m_keys; // of the whole tree, in its top-most node
};

/// A node that stands inside another one and knows it.
template <class Base>
class Child : public Base
{
public:
    explicit Child(Model* parent) : Base(parent) {}
};

} // namespace StrataSettings
