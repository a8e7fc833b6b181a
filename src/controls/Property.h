#pragma once

#include <utility>

namespace velmo::controls {

/// What is told that a property of it has changed.
class PropertyOwner
{
public:
    PropertyOwner(const PropertyOwner&) = delete;
    PropertyOwner& operator=(const PropertyOwner&) = delete;
    virtual ~PropertyOwner() = default;

    /// Called after each change of one of the owner's properties.
    virtual void PropertyChanged() = 0;

protected:
    PropertyOwner() = default;
};

/// A value of a control. Reading it is reading the value; assigning to it tells the owner, and only
/// when the value really changes. User-interface thread only.
template<class T>
class Property
{
public:
    /// Starts with `value` and tells nobody. The owner must outlive the property.
    explicit Property(PropertyOwner& owner, T value = {})
        : m_owner(owner)
        , m_value(std::move(value))
    {}
    Property(const Property&) = delete;
    ~Property() = default;

    Property& operator=(T value)
    {
        if (m_value != value) {
            m_value = std::move(value);
            m_owner.PropertyChanged();
        }
        return *this;
    }
    Property& operator=(const Property& other)
    {
        if (this != &other)
            *this = other.m_value;
        return *this;
    }

    operator const T&() const // NOLINT(google-explicit-constructor): a property reads as its value
    {
        return m_value;
    }

    /// The value, where the conversion is not taken by itself (members of a text, templates).
    const T& Get() const { return m_value; }

private:
    PropertyOwner& m_owner;
    T m_value;
};

} // namespace velmo::controls
