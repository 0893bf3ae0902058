#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/ReferenceCounted.h>

namespace TAV_marlo_v1 {

class Metadata;

/// A callback that a class with metadata hands out for a key. The base class does nothing.
class TAV_API MetadataCallBack : public ReferenceCounted {
public:
    MetadataCallBack() = default;
    virtual void execute(Metadata& owner, char const* key);

protected:
    ~MetadataCallBack() override;
};

} // namespace TAV_marlo_v1
