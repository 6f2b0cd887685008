# SPDX-License-Identifier: MIT
# The date of the release that is being built. The changelog has it, beside the project's version.
file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md VELDRON_RELEASES REGEX "^## ")
list(GET VELDRON_RELEASES 0 VELDRON_RELEASE)
if(NOT VELDRON_RELEASE MATCHES "^## ${PROJECT_VERSION} - ([0-9]+-[0-9]+-[0-9]+)$")
    message(FATAL_ERROR "CHANGELOG.md opens with \"${VELDRON_RELEASE}\", but this is ${PROJECT_VERSION}")
endif()
set(VELDRON_RELEASE_DATE ${CMAKE_MATCH_1})
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md)

# Where the project is on the web, with a slash at the end. It has no host yet: the name is of the domain
# that is reserved for examples, and leads nowhere. make-package reads this line too.
set(VELDRON_HOMEPAGE https://www.example.org/veldron/)
