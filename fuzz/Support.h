#pragma once

#include <tav/Compound.h>
#include <tav/Container.h>
#include <tav/NodeList.h>
#include <tav/PortList.h>
#include <tav/kit/StandardRuntime.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

using namespace TAV_marlo_v1;

/// Ends the program, which is a finding, when a promise did not hold.
void require(bool holds, char const* promise, char const* detail = "");

/// The input as a text of the interface, which ends at its first NUL.
std::string textOf(std::uint8_t const* data, std::size_t size);

/// A graph with nodes, a nested compound with ports on both sides, fan-in, connections and an annotation, for
/// the inputs to meet. Every type of node counts as unknown to its runtime but "mix".
class SmallDocument final : public Container {
public:
    enum Contents { eEmpty, eFilled };
    explicit SmallDocument(Contents contents);

    Compound& top() const { return *m_top; }

    char const* getName() const override { return "fuzz"; }
    char const* getFilePath() const override { return ""; }
    void rebuildCompounds() override {}
    bool isReadOnly() const override { return false; }
    Runtime* getRuntime() const override;

private:
    AddRefWrapper<Compound> m_top;
};

/// Nothing in the document contradicts itself.
void requireConsistent(SmallDocument const& document);

/// What the document saves can be loaded, and saving that gives the same bytes.
void requireStableText(SmallDocument const& document);

} // namespace fuzz
