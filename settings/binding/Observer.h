#pragma once

namespace StrataSettings
{

class PropertyBase;

/// Is told of changes that came from the store, after the property has taken them and outside its lock. Called on the
/// store's notification thread.
class Observer
{
public:
    virtual void OnPropertyChanged(const PropertyBase& property) = 0;

protected:
    ~Observer() = default;
};

} // namespace StrataSettings
