# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT

# Headers that the build generates and sources include: all that scripts/tidy needs built.
add_custom_target(made-headers)
add_dependencies(made-headers agent-proxy agent-adaptor wayland-protocols)
if(TARGET recording-agent-adaptor)
    add_dependencies(made-headers recording-agent-adaptor)
endif()
