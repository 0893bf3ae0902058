#pragma once

#include "EditScript.h"

namespace tool {

class EditSession;

// What the edits of the table do. The words fit the arguments there. Each throws EditError, with nothing
// changed, when it cannot be done.

// ---- nodes

void create(EditSession& session, Words const& words);
void createIO(EditSession& session, Words const& words);
void removeNodes(EditSession& session, Words const& words);
void renameNode(EditSession& session, Words const& words);
void chain(EditSession& session, Words const& words);
void group(EditSession& session, Words const& words);
void explode(EditSession& session, Words const& words);
void copyItems(EditSession& session, Words const& words);
void pasteItems(EditSession& session, Words const& words);

// ---- connections and ports

void connect(EditSession& session, Words const& words);
void disconnect(EditSession& session, Words const& words);
void disconnectAll(EditSession& session, Words const& words);
void setValue(EditSession& session, Words const& words);
void resetValue(EditSession& session, Words const& words);
void setType(EditSession& session, Words const& words);
void setFlag(EditSession& session, Words const& words);
void createPort(EditSession& session, Words const& words);
void removePort(EditSession& session, Words const& words);
void renamePort(EditSession& session, Words const& words);
void movePort(EditSession& session, Words const& words);
void watch(EditSession& session, Words const& words);
void unwatch(EditSession& session, Words const& words);

// ---- metadata and annotations

void setMetadata(EditSession& session, Words const& words);
void unsetMetadata(EditSession& session, Words const& words);
void makeBackdrop(EditSession& session, Words const& words);
void makeNote(EditSession& session, Words const& words);
void removeAnnotation(EditSession& session, Words const& words);
void renameAnnotation(EditSession& session, Words const& words);

// ---- the session itself

void undo(EditSession& session, Words const& words);
void redo(EditSession& session, Words const& words);
void beginGroup(EditSession& session, Words const& words);
void endGroup(EditSession& session, Words const& words);
void save(EditSession& session, Words const& words);
void quit(EditSession& session, Words const& words);

// ---- views: nothing is changed

void list(EditSession& session, Words const& words);
void show(EditSession& session, Words const& words);
void dump(EditSession& session, Words const& words);
void help(EditSession& session, Words const& words);

} // namespace tool
