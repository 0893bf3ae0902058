#pragma once

#include <string>
#include <vector>

namespace arithmetic {

struct InputRow {
    char const* name;
    char const* type;
    char const* value; // of a new node
};

/// One kind of node: what it looks like, and what it computes. Truth is 1, untruth 0.
struct TypeRow {
    char const* name;
    char const* doc;
    std::vector<InputRow> inputs;
    char const* outputType;
    double (*compute)(double const* inputs);
};

std::vector<TypeRow> const& allTypes();
/// Null when there is none of that name.
TypeRow const* findType(char const* name);
/// The library file of all types: one preset for each.
std::string libraryText();

} // namespace arithmetic
