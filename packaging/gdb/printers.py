"""GDB shows what a utility::Optional holds, and the record of a command with its status by name.

Installed under the name by which GDB loads it together with the library.
"""

import gdb
import gdb.printing


class OptionalPrinter:
    def __init__(self, optional):
        self.optional = optional
        self.pointer = optional["valuePointer"]

    # Before its constructor has run, an Optional points anywhere.
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
        yield "status", plain(self.record["status"])
        yield "errorCode", plain(self.record["errorCode"])
        yield "errorMessage", text(self.record["errorMessage"])
        yield "pendingAllowed", plain(self.record["isPendingAllowed"])


def plain(atomic):
    """Returns what a std::atomic holds, whatever the standard library calls it."""
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
