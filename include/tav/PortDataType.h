#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Namable.h>
#include <tav/ReferenceCounted.h>
#include <tav/StringArray.h>
#include <tav/Types.h>

#include <memory>

namespace TAV_marlo_v1 {

/// Gives access to animation curves of values of a type; implemented by a host, never called here.
class FCurveAccessor;

/// The type of a port's values: a name, a default value, a kind, and for enum types the items.
class TAV_API PortDataType : public ReferenceCounted, public Namable {
public:
    /// Null texts count as empty.
    static AddRefWrapper<PortDataType> createNew(char const* name, char const* defaultValue);

    /// The default value as text; lives as long as the type.
    char const* getDefaultValue() const noexcept;

    PortDataTypeKind getKind() const noexcept;
    void setKind(PortDataTypeKind kind) noexcept;

    /// Not owned; null when the type has none.
    FCurveAccessor* getFCurveAccessor() const noexcept;
    void setFCurveAccessor(FCurveAccessor* accessor) noexcept;

    /// True once an item was added.
    bool isEnum() const noexcept;
    /// Appends an item; null texts are ignored.
    void addEnumItem(char const* name, char const* value);
    /// Appends the item names in order.
    void getEnumItemNames(StringArray& names) const;
    /// The name of the first item of that value, "" when there is none; so for the value of a name.
    String getEnumItemName(char const* value) const;
    String getEnumItemValue(char const* name) const;

    /// Same name, default value, kind and items.
    virtual bool operator==(PortDataType const& other) const;

protected:
    PortDataType(char const* name, char const* defaultValue);
    ~PortDataType() override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // never null
};

} // namespace TAV_marlo_v1
