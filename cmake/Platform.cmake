# Stops a configuration for a machine that the code is not made for: ids are unsigned long in the
# contract with the host and have 64 bits, and numbers are read from texts eight bytes at a time,
# the lowest first.

if(NOT CMAKE_SIZEOF_VOID_P EQUAL 8 OR NOT CMAKE_CXX_BYTE_ORDER STREQUAL LITTLE_ENDIAN)
  math(EXPR bits "8 * ${CMAKE_SIZEOF_VOID_P}")
  message(FATAL_ERROR "EventSystem needs a 64-bit little-endian machine; this compiler makes "
                      "programs of ${bits} bits, ${CMAKE_CXX_BYTE_ORDER}.")
endif()
