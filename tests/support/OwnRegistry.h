#pragma once

#include <QString>
#include <QVariant>

#include <memory>

/// A registry that is empty at first and that only this process sees, as long as it lives. One at a time.
class OwnRegistry
{
public:
    OwnRegistry();
    ~OwnRegistry();
    OwnRegistry(const OwnRegistry&) = delete;
    OwnRegistry& operator=(const OwnRegistry&) = delete;

    /// A number or a text, for the machine and for the user. `key` is a path with backslashes.
    void Set(const QString& key, const QString& name, const QVariant& value);

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};
