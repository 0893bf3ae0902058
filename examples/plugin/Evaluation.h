#pragma once

#include <tav/Compound.h>
#include <tav/Port.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace arithmetic {

/// Computes values of ports, each once, through compounds of any depth.
class Evaluation {
public:
    /// The value as text, or what stands in its way.
    std::string textOf(TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Port> const& port);

private:
    using PortHandle = TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Port>;
    struct Entry {
        bool isDone = false; // or its sources are being computed
        double value = 0;
    };

    bool evaluate(PortHandle const& port);
    std::vector<PortHandle> sourcesOf(PortHandle const& port) const;
    bool compute(PortHandle const& port, std::vector<PortHandle> const& sources, double& value);

    std::unordered_map<TAV_marlo_v1::Port const*, Entry> m_entries;
    std::string m_error;
};

} // namespace arithmetic
