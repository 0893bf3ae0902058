#pragma once

#include <tav/Export.h>

namespace TAV_marlo_v1 {

namespace detail {
class SharedText;
}

/// A name. Also serves to build paths: "/" stands between nodes, "." before ports.
class TAV_API Namable {
public:
    /// The empty name.
    Namable();
    /// A null `name` gives the empty name.
    Namable(char const* name);
    Namable(Namable const& other);
    Namable& operator=(Namable const& other);

    virtual ~Namable();
    /// Lives until the next change of the name.
    virtual char const* getName() const;
    /// A null `name` changes nothing.
    virtual void setName(char const* name);
    /// Appends `text` as it is; null does nothing. All three that append set the name by setName.
    virtual void appendString(char const* text);
    /// Appends `name` behind a "/", which takes the place of one "/" or "." at the end. An empty
    /// name gets no separator; null does nothing.
    virtual void appendNodeName(char const* name);
    /// As appendNodeName, with ".".
    virtual void appendPortName(char const* name);

    bool operator==(Namable const& other) const noexcept;
    bool operator!=(Namable const& other) const noexcept { return !(*this == other); }

protected:
    /// The name as the library keeps it: equal texts are stored once.
    detail::SharedText const& sharedName() const noexcept { return *m_name; }

private:
    friend class NamedAccess;
    detail::SharedText const* m_name; // never null, one reference is held
};

} // namespace TAV_marlo_v1
