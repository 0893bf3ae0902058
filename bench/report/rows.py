"""The rows of the tables: what they are called, what is aimed at, and what they are compared with."""

from dataclasses import dataclass
from typing import Optional, Union

# How the cost of one item may grow with the size; what the memory adds is the yardstick's to say.
CONSTANT, LOGARITHMIC = "constant", "logarithmic"

BY_HUNDREDS = (1000, 10000, 100000, 1000000)
BY_TENS = (10, 100, 1000, 10000)


@dataclass(frozen=True)
class Row:
    name: str                                # as bench_tav has it
    title: str                               # in tables and pictures
    picture: Optional[str] = None
    aim: Union[None, float, str] = None      # at 100,000; or the row that it may stand EDITOR_AIM above
    yardstick: Optional[str] = None
    share: Optional[float] = None            # the largest wanted share of the yardstick
    growth: Optional[str] = CONSTANT         # None: not judged
    beside: Optional[str] = None             # plain structs that go through memory as it does, if not the yardstick
    key: str = "ns_per_item"

    def reference(self):
        """The row that says what of the growth is the memory's; None where nothing of it is."""
        return self.beside or (self.yardstick if self.yardstick and self.yardstick.endswith(".bare") else None)


EDITOR_AIM = 50  # ns over the unobserved row

YARDSTICKS = {"bare": "plain structs", "writer": "QXmlStreamWriter", "reader": "QXmlStreamReader"}


def kind_of(yardstick):
    return YARDSTICKS[yardstick.rsplit(".", 1)[1]]


def row(name, title, picture=None, **more):
    """A row whose yardstick is named after it."""
    return Row(name, title, picture, yardstick=name + ".bare", **more)


# How plain structs get dearer that are made one after the other, and met in random order.
MADE, MET = "create.bare", "remove at random.bare"

NODES = (
    row("create", "create a node, its ports, values and metadata, and add it", "editing", aim=1000),
    row("connect", "connect two ports", "editing", aim=300),
    row("find by name", "find by name", "finding", aim=150),
    row("find by path", "find by path of depth 8", "finding", aim=700),
    row("rename", "rename, all references right afterwards", "editing", aim=500),
    row("set value", "set a value, unobserved", "editing"),
    Row("set value, editor at the container", "the same, an editor at the container", aim="set value",
        yardstick="set value.bare"),
    Row("set value, editor at the node", "the same, an editor at the node", aim="set value",
        yardstick="set value.bare"),
    row("remove at random", "remove a random node with its connections", "editing", aim=2000, growth=LOGARITHMIC),
    row("cut a hub, called at the hub", "cut a connection of a hub, called at the hub", "editing", aim=300,
        growth=LOGARITHMIC),
    Row("cut a hub, called at the inputs", "the same, called at the inputs", aim=300,
        yardstick="cut a hub, called at the hub.bare", growth=LOGARITHMIC),
    row("next free name", "next free name among N taken ones", "finding", aim=500),
    Row("save", "save", "text", aim=1500, yardstick="save.writer", beside=MADE, share=0.25),
    Row("save, nested 8 deep", "save, nested 8 deep", "text", yardstick="save, nested 8 deep.writer",
        beside=MADE, share=0.25),
    Row("load", "load", "text", aim=2700, yardstick="load.reader", beside=MADE, share=0.5),
    Row("load, 32 levels deep", "load, 32 levels deep", "text", yardstick="load, 32 levels deep.reader",
        beside=MADE, share=0.5),
    Row("paste, every name taken", "paste, every name taken", "text", aim=5000,
        yardstick="paste, every name taken.reader", beside=MADE),
    row("destroy", "destroy", "editing"),
    Row("command: remove", "command: remove a random node", "commands", beside=MET, growth=LOGARITHMIC),
    Row("command: remove, undo", "its undo", "commands", aim=10000, beside=MET, growth=LOGARITHMIC),
    Row("command: remove, redo", "its redo", "commands", aim=10000, beside=MET, growth=LOGARITHMIC),
    Row("command: cut a hub", "command: cut a connection of a hub", "commands", beside=MET, growth=LOGARITHMIC),
    Row("command: cut a hub, undo", "its undo", "commands", beside=MET, growth=LOGARITHMIC),
    Row("command: paste", "command: paste, every name taken", "commands", aim=5000, beside=MET),
    Row("command: paste, undo", "its undo", "commands", beside=MET),
    Row("command: group", "command: group up to 10,000 nodes", "commands", beside=MET),
    Row("command: group, undo", "its undo", "commands", beside=MET),
    Row("command: explode", "command: explode them again", "commands", beside=MET),
)

MANY = (
    Row("changes in a bracket", "a change among N in one bracket, told to an editor"),
    row("annotations: add", "add an annotation to a compound with N", "editing"),
    row("annotations: find", "find one by name", "finding"),
    row("annotations: rename", "rename one"),
    row("annotations: remove", "remove one", growth=LOGARITHMIC),
    Row("definitions: add", "add a definition to a node library with N", yardstick="annotations: add.bare"),
    Row("definitions: find by preset path", "find one by preset path", "finding", yardstick="annotations: find.bare"),
)

FEW = (
    row("ports: add", "add a port to a node with N"),
    row("ports: find", "find one by name"),
    row("ports: rename", "rename one"),
    row("ports: remove", "remove one", growth=LOGARITHMIC),
    Row("metadata: set", "add a metadata entry to a node with N", yardstick="ports: add.bare"),
    Row("metadata: get", "get one", yardstick="ports: find.bare"),
    Row("metadata: remove", "remove one", yardstick="ports: remove.bare", growth=LOGARITHMIC),
    Row("editors at a node", "tell one of N editors at a node of a change"),
    Row("find by path, N names long", "find by path, a name of N in it", beside="find by path.bare"),
)

SESSION = (
    Row("session", "loaded, a node", key="load_ns", beside=MADE),
    Row("session", "edited at random, a command", key="edit_ns", beside=MET, growth=LOGARITHMIC),
    Row("session", "undone, a command", key="undo_ns", beside=MET, growth=LOGARITHMIC),
    Row("session", "saved, a node", key="save_ns", beside=MADE),
    Row("session", "most memory at any moment, bytes a node", key="peak_bytes"),
)

LIFECYCLE = (
    Row("lifecycle", "built and connected", key="build_ns", growth=None),
    Row("lifecycle", "saved", key="save_ns", growth=None),
    Row("lifecycle", "loaded", key="load_ns", growth=None),
    Row("lifecycle", "destroyed", key="destroy_ns", growth=None),
)

MEMORY = (
    Row("memory", "a node, bytes", key="bytes_per_node", aim=1000),
    Row("memory", "a connection, bytes", key="bytes_per_connection"),
    Row("memory.bare", "a node of plain structs, bytes", key="bytes_per_node", growth=None),
    Row("memory.bare", "a connection of plain structs, bytes", key="bytes_per_connection", growth=None),
    Row("peak memory of load", "most memory while loading, per byte of the text", key="peak_per_text"),
    Row("peak memory of load", "what the loaded graph keeps of it", key="left_per_text"),
    Row("peak memory of save", "most memory while saving, per byte of the text", key="peak_per_text"),
)

START = (
    ("nothing_ms", "a process that does nothing"),
    ("qt_ms", "one that loads Qt alone"),
    ("graph_ms", "one that loads the library and makes a graph"),
)

JUDGED = tuple(row for row in NODES + MANY + FEW + SESSION + MEMORY if row.growth)
