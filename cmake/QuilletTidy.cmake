# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT

# clang-tidy 14 cannot analyse <expected>; 16 can, told that GCC's library has concepts.
find_program(CLANG_TIDY_RUNNER run-clang-tidy-16)
if(CLANG_TIDY_RUNNER)
    add_custom_target(tidy
        COMMAND ${CMAKE_SOURCE_DIR}/scripts/tidy ${CMAKE_BINARY_DIR}
        WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
        USES_TERMINAL
        COMMENT "clang-tidy over the project's sources")
    # The headers that the sources include and the build makes.
    add_dependencies(tidy agent-proxy agent-adaptor)
else()
    add_custom_target(tidy
        COMMAND ${CMAKE_COMMAND} -E echo "clang-tidy 16 is not installed; scripts/install-packages tidy installs it"
        COMMAND ${CMAKE_COMMAND} -E false)
endif()
