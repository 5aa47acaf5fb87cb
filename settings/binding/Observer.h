#pragma once

namespace StrataSettings
{

class PropertyBase;

/// Is told of what came from the store, after the property has taken it and outside its lock. Any thread.
class Observer
{
public:
    /// The value or its constraint word is another one now.
    virtual void OnPropertyChanged(const PropertyBase& property) = 0;

    /// Something is missing that is worth another try: a store handle, a subscription or a value.
    virtual void OnMissing() {}

protected:
    ~Observer() = default;
};

} // namespace StrataSettings
