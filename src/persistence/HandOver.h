#pragma once

namespace TAV_marlo_v1 {

class Compound;
class Node;
class Port;

// A class of its own may keep the values and metadata of its ports elsewhere. What was read and stored
// with the ports is handed to it by the questions that carry a value to be kept. An object of the
// library's own class has it already.

/// To the owner of the port, with its children.
void handOver(Port& port);
void handOver(Node& node);
void handOver(Compound& compound);

} // namespace TAV_marlo_v1
