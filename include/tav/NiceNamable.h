#pragma once

#include <tav/Namable.h>

namespace TAV_marlo_v1 {

/// A name and a name to show to people.
class TAV_API NiceNamable {
public:
    NiceNamable();
    NiceNamable(char const* name, char const* niceName);
    NiceNamable(NiceNamable const& other);
    NiceNamable& operator=(NiceNamable const& other);

    virtual ~NiceNamable();
    virtual char const* getName() const;
    /// A null `name` changes nothing; so for setNiceName.
    virtual void setName(char const* name);
    /// The name itself when no nice name was given.
    virtual char const* getNiceName() const;
    virtual void setNiceName(char const* niceName);

    bool operator==(NiceNamable const& other) const noexcept;
    bool operator!=(NiceNamable const& other) const noexcept { return !(*this == other); }

private:
    Namable m_name;
    Namable m_niceName;
};

} // namespace TAV_marlo_v1
