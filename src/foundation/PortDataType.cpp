#include <tav/PortDataType.h>

#include <utility>
#include <vector>

namespace TAV_marlo_v1 {

namespace {

struct EnumItem {
    String name;
    String value;
};

bool operator==(EnumItem const& a, EnumItem const& b) noexcept
{
    return a.name == b.name && a.value == b.value;
}

} // namespace

struct PortDataType::Impl {
    explicit Impl(char const* text)
        : defaultValue(text)
    {
    }

    String defaultValue;
    PortDataTypeKind kind = eUnknownKind;
    FCurveAccessor* fCurveAccessor = nullptr;
    std::vector<EnumItem> enumItems;
};

AddRefWrapper<PortDataType> PortDataType::createNew(char const* name, char const* defaultValue)
{
    return AddRefWrapper<PortDataType>(new PortDataType(name, defaultValue));
}

PortDataType::PortDataType(char const* name, char const* defaultValue)
    : Namable(name)
    , m_impl(std::make_unique<Impl>(defaultValue))
{
}

PortDataType::~PortDataType() = default;

char const* PortDataType::getDefaultValue() const noexcept
{
    return m_impl->defaultValue.toChar();
}

PortDataTypeKind PortDataType::getKind() const noexcept
{
    return m_impl->kind;
}

void PortDataType::setKind(PortDataTypeKind kind) noexcept
{
    m_impl->kind = kind;
}

FCurveAccessor* PortDataType::getFCurveAccessor() const noexcept
{
    return m_impl->fCurveAccessor;
}

void PortDataType::setFCurveAccessor(FCurveAccessor* accessor) noexcept
{
    m_impl->fCurveAccessor = accessor;
}

bool PortDataType::isEnum() const noexcept
{
    return !m_impl->enumItems.empty();
}

void PortDataType::addEnumItem(char const* name, char const* value)
{
    if (name && value)
        m_impl->enumItems.push_back({name, value});
}

void PortDataType::getEnumItemNames(StringArray& names) const
{
    StringArray all(names);
    for (EnumItem const& item : m_impl->enumItems)
        all.add(item.name);
    names = std::move(all);
}

String PortDataType::getEnumItemName(char const* value) const
{
    for (EnumItem const& item : m_impl->enumItems) {
        if (value && item.value == value)
            return item.name;
    }
    return String();
}

String PortDataType::getEnumItemValue(char const* name) const
{
    for (EnumItem const& item : m_impl->enumItems) {
        if (name && item.name == name)
            return item.value;
    }
    return String();
}

bool PortDataType::operator==(PortDataType const& other) const
{
    return Namable::operator==(other) && m_impl->defaultValue == other.m_impl->defaultValue
           && m_impl->kind == other.m_impl->kind && m_impl->enumItems == other.m_impl->enumItems;
}

} // namespace TAV_marlo_v1
