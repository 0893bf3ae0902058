#include "ArithmeticTypes.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace arithmetic {

std::vector<TypeRow> const& allTypes()
{
    using In = double const*;
    std::vector<InputRow> const a = {{"a", "float", "0"}};
    std::vector<InputRow> const zeros = {{"a", "float", "0"}, {"b", "float", "0"}};
    std::vector<InputRow> const ones = {{"a", "float", "1"}, {"b", "float", "1"}};
    std::vector<InputRow> const mixed = {{"a", "float", "0"}, {"b", "float", "1"}, {"share", "float", "0.5"}};
    std::vector<InputRow> const chosen = {{"condition", "bool", "true"}, {"a", "float", "0"}, {"b", "float", "0"}};
    static std::vector<TypeRow> const types = {
        {"constant", "its value", {{"value", "float", "0"}}, "float", [](In in) { return in[0]; }},
        {"add", "a + b", zeros, "float", [](In in) { return in[0] + in[1]; }},
        {"subtract", "a - b", zeros, "float", [](In in) { return in[0] - in[1]; }},
        {"multiply", "a * b", ones, "float", [](In in) { return in[0] * in[1]; }},
        {"divide", "a / b", ones, "float", [](In in) { return in[0] / in[1]; }},
        {"power", "a to the power of b", ones, "float", [](In in) { return std::pow(in[0], in[1]); }},
        {"minimum", "the lesser of a and b", zeros, "float", [](In in) { return std::min(in[0], in[1]); }},
        {"maximum", "the greater of a and b", zeros, "float", [](In in) { return std::max(in[0], in[1]); }},
        {"negate", "-a", a, "float", [](In in) { return -in[0]; }},
        {"root", "the square root of a", a, "float", [](In in) { return std::sqrt(in[0]); }},
        {"mix", "from a to b by the share", mixed, "float", [](In in) { return in[0] + (in[1] - in[0]) * in[2]; }},
        {"greater", "whether a is above b", zeros, "bool", [](In in) { return in[0] > in[1] ? 1.0 : 0.0; }},
        {"choose", "a or else b", chosen, "float", [](In in) { return in[0] != 0 ? in[1] : in[2]; }},
    };
    return types;
}

TypeRow const* findType(char const* name)
{
    auto const found = std::find_if(allTypes().begin(), allTypes().end(),
                                    [name](TypeRow const& type) { return std::strcmp(type.name, name) == 0; });
    return found == allTypes().end() ? nullptr : &*found;
}

namespace {

std::string attribute(char const* name, char const* value)
{
    return std::string(" ") + name + "=\"" + value + "\"";
}

std::string presetText(TypeRow const& type)
{
    std::string text = "<node><tavNode" + attribute("name", type.name) + attribute("type", type.name)
                       + attribute("flag", "0") + "><metadatas><metadata" + attribute("name", "doc") + "><value>"
                       + type.doc + "</value></metadata></metadatas><ports>";
    for (InputRow const& input : type.inputs)
        text += "<port" + attribute("name", input.name) + attribute("type", input.type) + attribute("flag", "0")
                + attribute("is_input", "yes") + attribute("default_values", input.value) + "/>";
    text += "<port" + attribute("name", "out") + attribute("type", type.outputType) + attribute("flag", "0")
            + attribute("is_input", "no") + "/>";
    return text + "</ports></tavNode></node>";
}

} // namespace

std::string libraryText()
{
    std::string text = "<tavCompound name=\"arithmetic\" type=\"library\" flag=\"0\"><metadatas/><ports/>"
                       "<child_graph><sub_root><nodes>";
    for (TypeRow const& type : allTypes())
        text += presetText(type);
    return text + "</nodes><connections/></sub_root></child_graph></tavCompound>";
}

} // namespace arithmetic
