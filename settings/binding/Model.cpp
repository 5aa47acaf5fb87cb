#include "settings/binding/Model.h"

#include "settings/binding/PropertyBase.h"

#include <cassert>

namespace StrataSettings
{

Model::Model(Model* parent) : m_parent(parent)
{
    if (m_parent)
        m_parent->m_nodes.emplace_back(this);
}

void Model::Load(OrbStrataHandle handle)
{
    for (const Node& node : m_nodes)
        std::visit([handle](auto* child) { child->Load(handle); }, node);
}

bool Model::Save(OrbStrataHandle handle)
{
    bool saved = true;
    for (const Node& node : m_nodes)
        saved &= std::visit([handle](auto* child) { return child->Save(handle); }, node);
    return saved;
}

void Model::ApplyConstraints(OrbStrataHandle handle)
{
    for (const Node& node : m_nodes)
        if (Model* const* child = std::get_if<Model*>(&node))
            (*child)->ApplyConstraints(handle);
}

PropertyBase* Model::Find(std::wstring_view key) const
{
    const auto& keys = Root().m_keys;
    const auto found = keys.find(key);
    return found == keys.end() ? nullptr : found->second;
}

Model* Model::FindChild(const std::type_info& type) const
{
    for (const Node& node : m_nodes)
        if (Model* const* child = std::get_if<Model*>(&node); child && typeid(**child) == type)
            return *child;
    return nullptr;
}

void Model::MarkChanged()
{
    ForEachProperty([](PropertyBase& property) { property.MarkChanged(); });
}

void Model::CopyFrom(const Model& other)
{
    assert(typeid(*this) == typeid(other) && m_nodes.size() == other.m_nodes.size());
    for (std::size_t i = 0; i < m_nodes.size(); ++i)
        std::visit([&source = other.m_nodes[i]](auto* child) { child->CopyFrom(*std::get<decltype(child)>(source)); },
                   m_nodes[i]);
}

void Model::Register(PropertyBase& property)
{
    m_nodes.emplace_back(&property);
    const_cast<Model&>(Root()).m_keys.emplace(property.GetKey().String(), &property);
}

const Model& Model::Root() const noexcept
{
    const Model* node = this;
    while (node->m_parent)
        node = node->m_parent;
    return *node;
}

} // namespace StrataSettings
