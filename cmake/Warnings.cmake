# One interface target carries the warning set; every project target links it.
add_library(tallyra_warnings INTERFACE)
target_compile_options(tallyra_warnings INTERFACE
  -Wall -Wextra -Wpedantic
  -Wshadow                 # a local hiding a member or outer name
  -Wnon-virtual-dtor       # interfaces deleted through a base pointer
  -Woverloaded-virtual
  -Wdouble-promotion       # a float silently widened: our singles must stay singles
  -Wfloat-conversion       # a double silently narrowed to float or to an integer
  -Wimplicit-fallthrough
  -Wcast-align)
if(TALLYRA_WERROR)
  target_compile_options(tallyra_warnings INTERFACE -Werror)
endif()
