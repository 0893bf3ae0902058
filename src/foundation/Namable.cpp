#include <tav/Namable.h>

#include "foundation/NamedAccess.h"
#include "foundation/PathText.h"

#include <string>

namespace TAV_marlo_v1 {

using detail::SharedTextRef;

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

// What is appended goes through setName, so that a class that watches its name has one place to do so.

void Namable::appendString(char const* text)
{
    if (text)
        setName((std::string(getName()) + text).c_str());
}

void Namable::appendNodeName(char const* name)
{
    if (!name)
        return;
    std::string path(getName());
    detail::appendToPath(path, '/', name);
    setName(path.c_str());
}

void Namable::appendPortName(char const* name)
{
    if (!name)
        return;
    std::string path(getName());
    detail::appendToPath(path, '.', name);
    setName(path.c_str());
}

bool Namable::operator==(Namable const& other) const noexcept
{
    return m_name == other.m_name;
}

} // namespace TAV_marlo_v1
