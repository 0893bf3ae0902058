#pragma once

#include <tav/kit/StandardCompound.h>

namespace arithmetic {

/// A graph of arithmetic: its nodes are made from the runtime's presets, and its own ports keep the same
/// rules as those of its nodes.
class ArithmeticCompound final : public TAV_marlo_v1::kit::StandardCompound {
public:
    static TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Compound> createNew(
        TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Node> const& owner);

    char const* getSpecializedCompoundTypeName() const override;
    bool onPortAddConnection(TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Port> const& port,
                             TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Port> const& other) override;

private:
    explicit ArithmeticCompound(TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Node> const& owner);
};

} // namespace arithmetic
