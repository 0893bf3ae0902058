#pragma once

#include <string_view>

/// @file
/// The words of graph text, shared by writer and reader, and the depths that the reader accepts.

namespace TAV_marlo_v1::graphtext {

// elements
inline constexpr std::string_view kNodeRoot = "tavNode";
inline constexpr std::string_view kCompoundRoot = "tavCompound";
inline constexpr std::string_view kBackdrop = "tavBackdrop";
inline constexpr std::string_view kStickyNote = "tavStickyNote";
inline constexpr std::string_view kSubRoot = "sub_root";
inline constexpr std::string_view kNodes = "nodes";
inline constexpr std::string_view kNode = "node";
inline constexpr std::string_view kCompound = "compound";
inline constexpr std::string_view kBackdrops = "backdrops";
inline constexpr std::string_view kStickyNotes = "sticky_notes";
inline constexpr std::string_view kConnections = "connections";
inline constexpr std::string_view kConnection = "connection";
inline constexpr std::string_view kChildGraph = "child_graph";
inline constexpr std::string_view kNodeMetadatas = "node_metadatas";
inline constexpr std::string_view kPorts = "ports";
inline constexpr std::string_view kPort = "port";
inline constexpr std::string_view kMembers = "members";
inline constexpr std::string_view kMember = "member";
inline constexpr std::string_view kMetadatas = "metadatas";
inline constexpr std::string_view kMetadata = "metadata";
inline constexpr std::string_view kPropertyLists = "propertylists";
inline constexpr std::string_view kPropertyList = "propertylist";

// elements and attributes of one name
inline constexpr std::string_view kValue = "value";

// attributes
inline constexpr std::string_view kName = "name";
inline constexpr std::string_view kType = "type";
inline constexpr std::string_view kFlag = "flag";
inline constexpr std::string_view kIsInput = "is_input";
inline constexpr std::string_view kIsFanIn = "is_fan_in";
inline constexpr std::string_view kOptions = "options";
inline constexpr std::string_view kDefaultValues = "default_values";
inline constexpr std::string_view kDefaultInternalValues = "default_internal_values";
inline constexpr std::string_view kDefaultExternalValues = "default_external_values";
inline constexpr std::string_view kOutputPort = "output_port";
inline constexpr std::string_view kInputPort = "input_port";
inline constexpr std::string_view kInnerOutputPort = "inner_output_port";
inline constexpr std::string_view kInnerInputPort = "inner_input_port";
inline constexpr std::string_view kWatchPoint = "watchpoint";

// attribute values
inline constexpr std::string_view kYes = "yes";
inline constexpr std::string_view kNo = "no";
inline constexpr std::string_view kDisabled = "disabled";

// depths
inline constexpr unsigned kMaxCompoundDepth = 512;
inline constexpr unsigned kMaxPortDepth = 64;
inline constexpr unsigned kMaxPropertyListDepth = 64;

} // namespace TAV_marlo_v1::graphtext
