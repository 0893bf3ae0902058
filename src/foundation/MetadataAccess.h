#pragma once

#include <tav/Metadata.h>

namespace TAV_marlo_v1 {

/// The library's direct way to a store, past the virtual operations and past onMetadataChanged: for
/// readers that fill objects nobody listens to yet.
class MetadataAccess {
public:
    static PropertyList& store(Metadata& metadata) noexcept { return metadata.m_store; }
    static PropertyList const& store(Metadata const& metadata) noexcept { return metadata.m_store; }
};

} // namespace TAV_marlo_v1
