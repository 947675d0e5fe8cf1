"""Shows in GDB the value of a utility::Optional, and the record of a command with the name of its status.

Installed under a name that makes GDB load it together with the library.
"""

import gdb
import gdb.printing


class OptionalPrinter:
    def __init__(self, optional):
        self.optional = optional
        self.pointer = optional["valuePointer"]

    # The pointer is arbitrary before the constructor of the Optional has run.
    def holds_value(self):
        storage = self.optional["storage"].address
        return self.pointer != 0 and (storage is None or int(storage) == int(self.pointer))

    def to_string(self):
        if self.holds_value():
            return None
        return "no value" if self.pointer == 0 else "not initialised"

    def children(self):
        if self.holds_value():
            yield "value", self.pointer.dereference()


class CommandDataPrinter:
    def __init__(self, record):
        self.record = record

    def children(self):
        yield "reference", text(self.record["reference"])
        yield "status", load(self.record["status"])
        yield "errorCode", load(self.record["errorCode"])
        yield "errorMessage", text(self.record["errorMessage"])
        yield "pendingAllowed", load(self.record["isPendingAllowed"])


def load(atomic):
    """Returns the value of a std::atomic, independent of the names of its fields."""
    return atomic.address.cast(atomic.type.template_argument(0).pointer()).dereference()


def text(string):
    """Returns the text of a QString."""
    return string["d"]["ptr"].lazy_string(length=int(string["d"]["size"]))


def make_printers():
    printers = gdb.printing.RegexpCollectionPrettyPrinter("tarnwick")
    printers.add_printer("utility::Optional", "^utility::Optional<.*>$", OptionalPrinter)
    printers.add_printer("CommandData", "^CommandData$", CommandDataPrinter)
    return printers


gdb.printing.register_pretty_printer(gdb.current_objfile(), make_printers(), replace=True)
