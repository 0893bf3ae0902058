#pragma once

#include <tav/HostEditor.h>

namespace bench {

/// Counts the new values that it is told of.
class CountingEditor final : public TAV_marlo_v1::HostEditor {
public:
    void tav_onNodePortChange(TAV_marlo_v1::EPortChangeType type,
                              TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Port> const&) override
    {
        told += type == TAV_marlo_v1::ePortValuesChanged ? 1 : 0;
    }
    unsigned told = 0;
};

} // namespace bench
