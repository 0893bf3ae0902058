#pragma once

#include "EditScript.h"

#include <tav/Compound.h>
#include <tav/Container.h>
#include <tav/Port.h>

namespace tool {

// What the paths and names in a line lead to. Each throws EditError, naming the word, when it leads nowhere.

TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Node> nodeAt(TAV_marlo_v1::Container const& graph, std::string const& path);
TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Compound> compoundAt(TAV_marlo_v1::Container const& graph,
                                                               std::string const& path);
/// The compound that a node, which is not the top one, is in.
TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Compound> parentOf(TAV_marlo_v1::Node const& node, std::string const& path);

/// A port as the commands name it.
struct PortPlace {
    TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Port> port;
    TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Node> node; // which shows it: of an inner port the IO node
    std::string nodePath;
    std::string name; // with those of its parent ports
    TAV_marlo_v1::PortIOType ioType;
};

/// A node's port: at the path of a compound its outside, at that of an IO node what it shows. A path that fits
/// an input and an output means the input.
/// @param what the path might have led to, in the words of the error
PortPlace portAt(TAV_marlo_v1::Container const& graph, std::string const& path, char const* what = "port");

/// The two ports that can be connected with each other.
struct PortPair {
    TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Port> output;
    TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Port> input;
};
PortPair pairAt(TAV_marlo_v1::Container const& graph, std::string const& outputPath, std::string const& inputPath);

/// The name of an item of a compound, which may be given by its path too.
std::string memberName(TAV_marlo_v1::Compound const& compound, std::string const& word);

/// The path of a node, "/" for the top one.
std::string pathOf(TAV_marlo_v1::Node const& node);

/// The word, if it can be a name. @throws EditError when it is empty or the runtime refuses it
std::string const& requireName(TAV_marlo_v1::Container const& graph, std::string const& word);

} // namespace tool
