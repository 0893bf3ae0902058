#include <tav/Namable.h>

#include "foundation/NamedAccess.h"

#include <string>

namespace TAV_marlo_v1 {

using detail::SharedTextRef;

namespace {

/// The end of a path is extended behind `separator`, which takes the place of a separator there.
std::string extendedBy(std::string_view path, char separator, char const* name)
{
    std::string extended(path);
    if (!extended.empty()) {
        if (extended.back() == '/' || extended.back() == '.')
            extended.pop_back();
        extended += separator;
    }
    return extended += name;
}

} // namespace

Namable::Namable()
    : m_name(&detail::SharedText::empty())
{
    m_name->addRef();
}

Namable::Namable(char const* name)
    : m_name(&detail::SharedText::intern(name ? name : ""))
{
}

Namable::Namable(Namable const& other)
    : m_name(other.m_name)
{
    m_name->addRef();
}

Namable& Namable::operator=(Namable const& other)
{
    NamedAccess::setText(*this, SharedTextRef(*other.m_name));
    return *this;
}

Namable::~Namable()
{
    m_name->release();
}

char const* Namable::getName() const
{
    return m_name->chars();
}

void Namable::setName(char const* name)
{
    if (name)
        NamedAccess::setText(*this, name);
}

void Namable::appendString(char const* text)
{
    if (text)
        NamedAccess::setText(*this, std::string_view(std::string(m_name->view()) += text));
}

void Namable::appendNodeName(char const* name)
{
    if (name)
        NamedAccess::setText(*this, std::string_view(extendedBy(m_name->view(), '/', name)));
}

void Namable::appendPortName(char const* name)
{
    if (name)
        NamedAccess::setText(*this, std::string_view(extendedBy(m_name->view(), '.', name)));
}

bool Namable::operator==(Namable const& other) const noexcept
{
    return m_name == other.m_name;
}

} // namespace TAV_marlo_v1
