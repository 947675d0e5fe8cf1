# Finds the debugger GDB and sets GDB_EXECUTABLE.
include(FindPackageHandleStandardArgs)

find_program(GDB_EXECUTABLE gdb)
mark_as_advanced(GDB_EXECUTABLE)
find_package_handle_standard_args(GDB REQUIRED_VARS GDB_EXECUTABLE)
