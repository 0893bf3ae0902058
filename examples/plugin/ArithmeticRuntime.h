#pragma once

#include <tav/kit/StandardRuntime.h>

namespace arithmetic {

/// The types of ArithmeticTypes.h as presets, with nodes and compounds that keep the rules, and graphs that
/// can be evaluated.
class ArithmeticRuntime final : public TAV_marlo_v1::kit::StandardRuntime {
public:
    ArithmeticRuntime();

    /// Names stand in paths as they are.
    bool isLegalName(char const* name) const override;
    TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Node> makeNode(TAV_marlo_v1::Container* container,
                                                             char const* type) override;
    TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Compound> makeCompound(
        TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Node> const& owner, char const* type) override;

    /// Evaluates every output in the compound that feeds nothing.
    /// @param data a PropertyList*, which gets a pair for each: the port's path, and the value or an error
    void doPublishCompound(TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Compound> const& compound, bool wholeGraph,
                           void* data) override;
};

} // namespace arithmetic
