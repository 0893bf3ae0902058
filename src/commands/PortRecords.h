#pragma once

#include "commands/CommandScope.h"
#include "commands/EditLog.h"

#include <tav/PortProperties.h>
#include <tav/StringArray.h>

#include <cstdint>
#include <vector>

namespace TAV_marlo_v1::detail {

enum class PortOperation {
    eCreate,
    eDelete,
    eRename,
    eMove,
    eSetDataType,
    eSetValues,
    eResetValues,
    eSetMetadata,
    eSetFlag
};

/// One recorded edit of a port, with what its operation needs.
struct PortRecord {
    PortOperation operation;
    PortIOType ioType;
    String name;     // of the port; of a child or member a dotted one
    String argument; // new name, type name or key
    String value{};
    bool hasValue = false; // otherwise the metadata entry goes
    bool onInside = false; // the inside's values
    bool on = false;
    PortFlags flag = eNoPortFlags;
    unsigned from = 0, to = 0;
    StringArray values{};
    PortProperties properties{};
};

/// The ports that a record may name: the lists of a node, of a compound's node the outside ones.
class PortRecords {
public:
    // Recording: false, with nothing recorded, for a null text or an argument that makes no sense.

    bool createPort(PortIOType ioType, char const* name, char const* typeName, PortProperties const& properties);
    bool deletePort(PortIOType ioType, char const* name);
    bool renamePort(PortIOType ioType, char const* name, char const* newName);
    bool movePort(PortIOType ioType, unsigned from, unsigned to);
    bool setPortDataType(PortIOType ioType, char const* name, char const* typeName);
    bool setPortValues(PortIOType ioType, char const* name, StringArray const& values, bool onInside);
    bool resetPortValues(PortIOType ioType, char const* name, bool onInside);
    bool setPortMetaDataValue(PortIOType ioType, char const* name, char const* key, char const* value);
    bool setPortFlag(PortIOType ioType, char const* name, PortFlags flag, bool on);

    bool empty() const noexcept { return m_records.empty(); }
    /// Applies all to the node's ports; of an IO node these are the inner ones of its compound.
    /// @return whether every record was carried out
    bool perform(EditLog& log, Node& node) const;

private:
    bool add(PortRecord record);

    std::vector<PortRecord> m_records;
};

/// What the two commands on ports have in common: records for the ports of one node, which is a compound's
/// or any.
struct PortCommand {
    /// @return whether every record was carried out
    bool doit(bool wantsCompound);
    bool undo(Renamings const* renamings);

    CommandTarget target;
    PortRecords records;
    EditLog log;
};

} // namespace TAV_marlo_v1::detail
