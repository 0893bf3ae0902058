#include <tav/kit/StandardRuntime.h>

#include <tav/NodeLibrary.h>
#include <tav/PortDataType.h>
#include <tav/QtText.h>

#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace TAV_marlo_v1;

namespace {

struct LibraryFile : testing::Test {
    kit::StandardRuntime runtime;
    std::string const path = std::string(TAV_EXAMPLES_DIR) + "/library/arithmetic.library.xml";

    void addExample()
    {
        StatusStr const status = runtime.addLibraryFile(path.c_str());
        ASSERT_STREQ(status.getErrorString(), "");
    }
};

void describe(NodeLibrary const& library, QStringList& lines)
{
    lines << QString("%1 (%2)").arg(library.getName(), library.getNiceName());
    for (AddRefWrapper<NodeDefinition> const& definition : library.nodeDefs())
        lines << QString("%1 (%2) in %3")
                     .arg(definition->getName(), definition->getNiceName(), definition->category().toChar());
    for (AddRefWrapper<NodeLibrary> const& child : library.subLibraries())
        describe(*child, lines);
}

} // namespace

TEST_F(LibraryFile, CompoundsOfTypeLibraryAreSubLibrariesAndAllElseDefinitions)
{
    addExample();
    QStringList lines;
    describe(*runtime.getNodeLibrary()->getSubLibraryAt(0), lines);
    EXPECT_EQ(lines, QStringList({"arithmetic (Arithmetic)", "constant (constant) in arithmetic",
                                  "basic (Basic operations)", "add (Add) in arithmetic/basic",
                                  "multiply (Multiply) in arithmetic/basic", "sum (Sum of all) in arithmetic/basic",
                                  "interpolation (interpolation)", "blend (Blend) in arithmetic/interpolation"}))
        << lines.join('\n').toStdString();
}

TEST_F(LibraryFile, ADefinitionKeepsItsOwnTextAndMetadata)
{
    addExample();
    AddRefWrapper<NodeDefinition> const add = runtime.getNodeDefinitionFromPresetPath("arithmetic/basic/add");
    ASSERT_TRUE(add);
    EXPECT_EQ(QString(kit::StandardRuntime::getPresetText(add).toChar()).section('\n', 0, 0),
              "<tavNode name=\"add\" type=\"add\" flag=\"0\">");
    StringArray doc;
    add->getMetadata("doc", doc);
    EXPECT_EQ(doc, StringArray("a + b"));
    EXPECT_EQ(runtime.getNodeDefinitionFromPresetPath("add"), add);

    AddRefWrapper<NodeDefinition> const blend = runtime.getNodeDefinitionFromPresetPath("blend");
    EXPECT_EQ(QString(kit::StandardRuntime::getPresetText(blend).toChar()).section('"', 0, 0), "<tavCompound name=");
    EXPECT_TRUE(kit::StandardRuntime::getPresetText(NodeDefinition::createNew("free", "Free")).empty());
}

TEST_F(LibraryFile, WhatIsRefusedAddsNothingAndSaysWhy)
{
    addExample();
    QFile file(QString::fromStdString(path));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray const good = file.readAll();
    struct Row {
        QByteArray text;
        char const* message;
    };
    Row const rows[] = {
        {good, "lib: there is a library \"arithmetic\" already"},
        {QByteArray(good).replace("name=\"arithmetic\" type=\"library\"", "name=\"other\" type=\"graph\""),
         "lib: line 1, column 1: found a compound of type \"graph\", expected one of type \"library\""},
        {QByteArray(good).replace("name=\"arithmetic\"", "name=\"other\"").left(3000), "lib: line "},
        {"", "lib: line 1, column "},
    };
    for (Row const& row : rows) {
        StatusStr const status = runtime.addLibraryFromText(row.text.constData(), "lib");
        EXPECT_EQ(std::string(status.getErrorString()).rfind(row.message, 0), 0u) << status.getErrorString();
        EXPECT_EQ(runtime.getNodeLibrary()->getNumberOfSubLibraries(), 1u);
    }
    StatusStr const missing = runtime.addLibraryFile("no/such.library.xml");
    EXPECT_EQ(std::string(missing.getErrorString()).rfind("no/such.library.xml: cannot be read", 0), 0u);
    EXPECT_EQ(runtime.getNumberOfContainers(), 0u);
}

TEST_F(LibraryFile, TheUsualDataTypesAreThereWithTheirDefaults)
{
    QStringList lines;
    for (unsigned i = 0; i < runtime.getNumberOfPortDataTypes(); ++i) {
        AddRefWrapper<PortDataType> const type = runtime.getPortDataType(i);
        lines << QString("%1=%2 %3").arg(type->getName(), type->getDefaultValue()).arg(type->getKind(), 0, 16);
    }
    EXPECT_EQ(lines,
              QStringList({"bool=false 1", "int=0 2", "float=0 3", "string= 4", "float2=0;0 103", "float3=0;0;0 103",
                           "float4=0;0;0;0 103", "color=0;0;0 108", "any= 0", "interpolation=0 5", "blend_mode=0 5"}))
        << lines.join('\n').toStdString();
    EXPECT_STREQ(runtime.getPortDataType("interpolation")->getEnumItemName("2").toChar(), "smooth");
}
