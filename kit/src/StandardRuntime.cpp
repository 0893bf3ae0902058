#include <tav/kit/StandardRuntime.h>

#include "TextFile.h"

#include <tav/Container.h>
#include <tav/NodeLibrary.h>
#include <tav/NodeList.h>
#include <tav/PortDataType.h>
#include <tav/kit/StandardCompound.h>

#include <cstring>
#include <string>
#include <unordered_set>

namespace TAV_marlo_v1::kit {

namespace {

constexpr char kLibraryType[] = "library";

/// A definition together with the text that its nodes are made from.
class PresetDefinition final : public NodeDefinition {
public:
    PresetDefinition(char const* name, char const* niceName, String text)
        : NodeDefinition(name, niceName)
        , m_text(std::move(text))
    {
    }
    String const& text() const noexcept { return m_text; }

private:
    String m_text;
};

/// Holds a library's graph while it is read, so that its ports find the runtime's data types. It is
/// not registered: nobody has to hear of it.
class LibraryText final : public Container {
public:
    explicit LibraryText(Runtime& runtime)
        : m_runtime(&runtime)
    {
        AddRefWrapper<Node> const top = Node::createNew(this, kLibraryType);
        m_compound = StandardCompound::createNew(top, nullptr);
        setTopNode(top);
    }
    Compound& compound() const { return *m_compound; }

    char const* getName() const override { return kLibraryType; }
    char const* getFilePath() const override { return ""; }
    void rebuildCompounds() override {}
    bool isReadOnly() const override { return true; }
    Runtime* getRuntime() const override { return m_runtime; }

private:
    Runtime* m_runtime;
    AddRefWrapper<Compound> m_compound;
};

bool isLibrary(Node const& node)
{
    return node.isCompound() && std::strcmp(node.getNodeTypeName(), kLibraryType) == 0;
}

/// A compound's entries stand with the compound or, rarely, with its owner node.
Metadata const& metadataOf(Node const& node)
{
    AddRefWrapper<Compound> const compound = node.getAsCompound();
    if (compound && !compound->getPropertyList().empty())
        return *compound;
    return node;
}

std::string niceNameOf(Node const& node)
{
    StringArray values;
    metadataOf(node).getMetadata("uiname", values);
    return values.empty() ? node.getName() : values[0];
}

AddRefWrapper<NodeDefinition> makeDefinition(Node const& node, char const* category)
{
    AddRefWrapper<Compound> const compound = node.getAsCompound();
    AddRefWrapper<NodeDefinition> const definition(
        new PresetDefinition(node.getName(), niceNameOf(node).c_str(),
                             compound ? compound->saveToString(nullptr) : node.saveToString(nullptr)));
    definition->setFromPropertyList(metadataOf(node).getPropertyList());
    definition->setCategory(String(category));
    return definition;
}

using TypeNames = std::unordered_set<std::string>;

/// Recursion ends where the reader's limit for nested compounds does.
/// @param types gets the types of the nodes that the definitions make
AddRefWrapper<NodeLibrary> makeLibrary(Compound const& compound, std::string const& path, TypeNames& types)
{
    AddRefWrapper<Node> const owner = compound.getAsNode();
    AddRefWrapper<NodeLibrary> const library = NodeLibrary::createNew(owner->getName(), niceNameOf(*owner).c_str());
    for (AddRefWrapper<Node> const& node : compound.nodes()) {
        if (isLibrary(*node)) {
            library->addSubLibrary(makeLibrary(*node->getAsCompound(), path + "/" + node->getName(), types));
            continue;
        }
        library->addNode(makeDefinition(*node, path.c_str()));
        types.insert(node->getNodeTypeName());
    }
    return library;
}

struct TypeRow {
    char const* name;
    char const* defaultValue;
    std::uint32_t kind;
};

// One array dimension: a list with one value for each component.
constexpr std::uint32_t kComponents = 0x100;

constexpr TypeRow kTypes[] = {
    {"bool", "false", eBoolKind},
    {"int", "0", eIntKind},
    {"float", "0", eFloatKind},
    {"string", "", eStringKind},
    {"float2", "0;0", eFloatKind | kComponents},
    {"float3", "0;0;0", eFloatKind | kComponents},
    {"float4", "0;0;0;0", eFloatKind | kComponents},
    {"color", "0;0;0", eColorKind | kComponents},
    {"any", "", eUnknownKind},
};

void addEnumType(Runtime& runtime, char const* name, std::initializer_list<char const*> items)
{
    AddRefWrapper<PortDataType> const type = runtime.createPortDataType(name, "0");
    type->setKind(eEnumKind);
    unsigned value = 0;
    for (char const* item : items)
        type->addEnumItem(item, std::to_string(value++).c_str());
}

} // namespace

struct StandardRuntime::Impl {
    TypeNames types; // of the nodes that presets make
};

StandardRuntime::StandardRuntime(char const* name)
    : Runtime(name)
    , m_impl(std::make_unique<Impl>())
{
    for (TypeRow const& row : kTypes)
        createPortDataType(row.name, row.defaultValue)->setKind(static_cast<PortDataTypeKind>(row.kind));
    addEnumType(*this, "interpolation", {"constant", "linear", "smooth"});
    addEnumType(*this, "blend_mode", {"over", "add", "multiply", "screen"});
    setNodeLibrary(NodeLibrary::createNew(name, nullptr));
}

StandardRuntime::~StandardRuntime() = default;

StatusStr StandardRuntime::addLibraryFromText(char const* text, char const* sourceName)
{
    LibraryText graph(*this);
    StatusStr const status = graph.compound().restoreFromString(text ? text : "");
    if (!status)
        return errorIn(sourceName, status.getErrorString());

    AddRefWrapper<Node> const top = graph.getTopNode();
    if (!isLibrary(*top)) {
        std::string const message = std::string("line 1, column 1: found a compound of type \"")
                                    + top->getNodeTypeName() + "\", expected one of type \"" + kLibraryType + "\"";
        return errorIn(sourceName, message.c_str());
    }
    AddRefWrapper<NodeLibrary> const root = getNodeLibrary();
    for (AddRefWrapper<NodeLibrary> const& library : root->subLibraries()) {
        if (std::strcmp(library->getName(), top->getName()) == 0) {
            std::string const message = std::string("there is a library \"") + top->getName() + "\" already";
            return errorIn(sourceName, message.c_str());
        }
    }
    root->addSubLibrary(makeLibrary(graph.compound(), top->getName(), m_impl->types));
    return StatusStr();
}

StatusStr StandardRuntime::addLibraryFile(char const* path)
{
    QByteArray bytes;
    StatusStr const status = readTextFile(path, bytes);
    return !status ? status : addLibraryFromText(bytes.constData(), path);
}

bool StandardRuntime::knowsNodeType(char const* type) const
{
    return type && (m_impl->types.count(type) > 0 || getNodeDefinitionFromPresetPath(type));
}

AddRefWrapper<Node> StandardRuntime::makeNode(Container* container, char const*)
{
    return Node::createNew(container, nullptr);
}

AddRefWrapper<Compound> StandardRuntime::makeCompound(AddRefWrapper<Node> const& owner, char const*)
{
    return StandardCompound::createNew(owner, nullptr);
}

String StandardRuntime::getPresetText(AddRefWrapper<NodeDefinition> const& definition)
{
    auto const* const preset = dynamic_cast<PresetDefinition const*>(definition.get());
    return preset ? preset->text() : String();
}

} // namespace TAV_marlo_v1::kit
