# Finds the model checker Spin and sets SPIN_EXECUTABLE.
include(FindPackageHandleStandardArgs)

find_program(SPIN_EXECUTABLE spin)
mark_as_advanced(SPIN_EXECUTABLE)
find_package_handle_standard_args(Spin REQUIRED_VARS SPIN_EXECUTABLE)
