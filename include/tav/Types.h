#pragma once

#include <cstdint>

/// @file
/// The enumerations of the interface. They are plain 32-bit enumerations (UIFeatureFlag: 64), so
/// that `eInput` and `PortIOType::eInput` both read. Those used as bit sets have `|`, `&` and `~`.

namespace TAV_marlo_v1 {

/// Index or count that means "not found" or "not made".
constexpr unsigned kNotFound = ~0u;

/// The kinds of message a node can carry; eAnyMessage is no kind but matches every one in queries.
enum MessageType : std::uint32_t { eInfo = 0, eWarning = 1, eError = 2, eAnyMessage = 3 };

/// Marks of a node's role in its compound.
enum NodeFlags : std::uint32_t {
    eNoNodeFlags = 0,
    eInputIO = 8,   ///< shows the compound's inputs to the nodes inside, as outputs
    eOutputIO = 16, ///< shows the compound's outputs to the nodes inside, as inputs
    eAnyIO = 24     ///< mask: an IO node of either kind
};

/// Marks of a port.
enum PortFlags : std::uint32_t {
    eNoPortFlags = 0,
    eDetached = 1,        ///< left its list, or its owner died
    eFanIn = 2,           ///< gathers several connections through member ports
    eExposed = 4,         ///< shown to the outside by its owner; kept in step on both sides of a compound port
    eReconnecting = 16,   ///< set while a removal is the first half of a replacement
    eUnconnectable = 0x20 ///< no connection may be added
};

/// Marks of a compound.
enum CompoundFlags : std::uint32_t {
    eNoCompoundFlags = 0,
    eNoIOPortFill = 1,   ///< a new IO node does not get the inner ports
    eReferenced = 2,     ///< stands for a definition kept elsewhere
    eImported = 4,       ///< came from another document
    eDeletingIOPorts = 8 ///< transient: the ports of a removed IO node are being deleted; never saved
};

/// Marks of a node library.
enum LibraryFlags : std::uint32_t {
    eNoLibraryFlags = 0,
    eReadOnlyLibrary = 1, ///< an editor offers no way to change it
    eHiddenLibrary = 2    ///< an editor does not list it
};

/// Direction of a port, seen from the object that shows it.
enum PortIOType : std::uint32_t { eInput = 0, eOutput = 1 };

/// Which connections a query lists.
enum CnxType : std::uint32_t {
    eAllCnx = 0,
    eInnerCnx = 1,    ///< both ends among the named nodes
    eCrossingCnx = 2, ///< exactly one end among them
    eThroughCnx = 3,  ///< compound port straight to compound port
    eInputCnx = 4,
    eOutputCnx = 5
};

/// How Node::getDefaultPort chooses.
enum DefaultPortFilter : std::uint32_t {
    eConnectable = 0, ///< the first output, or the first input without a connection
    eFirst = 1        ///< the first port of the list
};

enum ECnxChangeType : std::uint32_t { eCnxAdded = 0, eCnxRemoved = 1, eFanInCnxAdded = 2 };

enum EPortChangeType : std::uint32_t {
    ePortAdded = 0,
    ePortRemoved = 1,
    ePortMoved = 2,
    ePortRenamed = 3,
    ePortDataTypeChanged = 4,
    ePortValuesChanged = 5,
    ePortConnected = 6,
    ePortDisconnected = 7,
    ePortMetadataChanged = 8,
    ePortFlagsChanged = 9,
    ePortFanInChanged = 10,
    eWatchPointSet = 11,
    eWatchPointRemoved = 12,
    ePortExposureChanged = 13,
    ePortValuesReset = 14
};

enum ENodeChangeType : std::uint32_t {
    eNodeAdded = 0,
    eNodeRemoved = 1,
    eNodeDeleted = 2, ///< left its graph for good
    eNodeRenamed = 3,
    eNodeStateChanged = 4,
    eNodeMessagesChanged = 5,
    eNodeMetadataChanged = 6
};

enum EAnnotationChangeType : std::uint32_t {
    eAnnotationAdded = 0,
    eAnnotationRemoved = 1,
    eAnnotationStateChanged = 2,
    eAnnotationRenamed = 3
};

enum EContainerChangeType : std::uint32_t { eContainerRegistered = 0, eContainerUnregistered = 1 };

enum ENodeLibraryChangeType : std::uint32_t {
    eDefinitionAdded = 0,   ///< index: the new definition's, the last
    eSubLibraryAdded = 1,   ///< index: the new sub-library's, the last
    eSubLibraryRemoved = 2, ///< index: the one it had
    eDefinitionsSorted = 3  ///< index: 0
};

/// Answer of a client that is asked whether it wants to be connected with.
enum ClientConnectionStatus : std::uint32_t { eCannotConnect = 0, eNotHandled = 1, eCanConnect = 2 };

/// What shape the values of a data type have. The bits of eArrayDimensionsMask hold the number of
/// array dimensions, shifted left by 8.
enum PortDataTypeKind : std::uint32_t {
    eUnknownKind = 0,
    eBoolKind = 1,
    eIntKind = 2,
    eFloatKind = 3,
    eStringKind = 4,
    eEnumKind = 5,
    eDoubleKind = 6,
    eInt64Kind = 7,
    eColorKind = 8,
    eVectorKind = 9,
    eMatrixKind = 10,
    eFileKind = 11,
    eObjectKind = 12,
    eListKind = 13,
    eArrayDimensionsMask = 0xff00
};

/// The groups of metadata a port owner can be asked for.
enum MetadataType : std::uint32_t {
    eAnyMetadata = 0,
    eUIMetadata = 1,  ///< keys that begin with "ui" in any case: how an editor draws the port
    eUserMetadata = 2 ///< all others
};

/// When a metadata callback is wanted.
enum MetadataCallBackType : std::uint32_t { eMetadataChangedCallBack = 0, eMetadataRemovedCallBack = 1 };

/// Which connections Compound::saveItemsToString writes.
enum ESaveMode : std::uint32_t {
    eSaveAllConnections = 0,           ///< every connection of the named nodes and of the compound's own ports
    eSaveInnerConnections = 1,         ///< only those between two named nodes
    eSaveAllButThroughConnections = 2, ///< all but those straight from compound port to compound port
    eSaveNoConnections = 3             ///< none
};

/// Parts of an editor that a runtime can switch off.
enum UIFeatureFlag : std::uint64_t {
    eNoUIFeature = 0,
    eCompoundFeature = 1u << 0,
    eFanInFeature = 1u << 1,
    eAnnotationFeature = 1u << 2,
    eWatchPointFeature = 1u << 3,
    ePublishFeature = 1u << 4,
    ePortEditingFeature = 1u << 5,
    eMetadataFeature = 1u << 6,
    eClipboardFeature = 1u << 7,
    eReferenceFeature = 1u << 8
};

// The bit operators of a flag enumeration.
#define TAV_FLAG_OPERATORS(E, Word)                                                                                    \
    constexpr E operator|(E a, E b) noexcept                                                                           \
    {                                                                                                                  \
        return static_cast<E>(static_cast<Word>(a) | static_cast<Word>(b));                                            \
    }                                                                                                                  \
    constexpr E operator&(E a, E b) noexcept                                                                           \
    {                                                                                                                  \
        return static_cast<E>(static_cast<Word>(a) & static_cast<Word>(b));                                            \
    }                                                                                                                  \
    constexpr E operator~(E a) noexcept                                                                                \
    {                                                                                                                  \
        return static_cast<E>(~static_cast<Word>(a));                                                                  \
    }

TAV_FLAG_OPERATORS(NodeFlags, std::uint32_t)
TAV_FLAG_OPERATORS(PortFlags, std::uint32_t)
TAV_FLAG_OPERATORS(CompoundFlags, std::uint32_t)
TAV_FLAG_OPERATORS(LibraryFlags, std::uint32_t)
TAV_FLAG_OPERATORS(UIFeatureFlag, std::uint64_t)

#undef TAV_FLAG_OPERATORS

} // namespace TAV_marlo_v1
