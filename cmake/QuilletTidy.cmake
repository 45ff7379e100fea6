# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT

# The generated headers that sources include: scripts/tidy needs nothing else built.
add_custom_target(made-headers)
add_dependencies(made-headers agent-proxy agent-adaptor wayland-protocols)
if(TARGET recording-agent-adaptor)
    add_dependencies(made-headers recording-agent-adaptor)
endif()
