# Writes version_info.json from the project version and, when the sources are
# a git checkout, the commit, branch, tag and build count. Without git (a
# tarball) the commit reads "unknown" and the rest falls back to plain values.
# Run with -DPROJECT_VERSION=... -DSOURCE_DIR=... -DOUTPUT=...

function(git_out var)
  set(${var} "" PARENT_SCOPE)
  if(NOT GIT_EXECUTABLE)
    return()
  endif()
  execute_process(COMMAND ${GIT_EXECUTABLE} ${ARGN}
    WORKING_DIRECTORY ${SOURCE_DIR}
    OUTPUT_VARIABLE out ERROR_QUIET RESULT_VARIABLE rc
    OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(rc EQUAL 0)
    set(${var} "${out}" PARENT_SCOPE)
  endif()
endfunction()

find_program(GIT_EXECUTABLE git)
git_out(commit rev-parse --short=7 HEAD)
git_out(branch rev-parse --abbrev-ref HEAD)
git_out(tag describe --tags --exact-match HEAD)
git_out(count rev-list --count HEAD)

if(commit STREQUAL "")
  set(commit "unknown")
endif()
if(branch STREQUAL "" OR branch STREQUAL "HEAD")
  set(branch "main")
endif()
if(count STREQUAL "")
  set(count "1")
endif()

# The kind of build follows the tag: v1.2.0 is a release, v1.2.0-rc1 a
# release candidate, and so on; an untagged build is a development build.
set(type "development")
if(NOT tag STREQUAL "")
  if(tag MATCHES "-rc")
    set(type "rc")
  elseif(tag MATCHES "-beta")
    set(type "beta")
  elseif(tag MATCHES "-alpha")
    set(type "alpha")
  else()
    set(type "release")
  endif()
endif()

string(TIMESTAMP timestamp "%Y%m%d-%H%M%S" UTC)

set(json "{\n")
string(APPEND json "  \"version\": \"${PROJECT_VERSION}\",\n")
string(APPEND json "  \"build\": \"${count}\",\n")
string(APPEND json "  \"commit\": \"${commit}\",\n")
string(APPEND json "  \"timestamp\": \"${timestamp}\",\n")
string(APPEND json "  \"branch\": \"${branch}\",\n")
if(NOT tag STREQUAL "")
  string(APPEND json "  \"tag\": \"${tag}\",\n")
endif()
string(APPEND json "  \"type\": \"${type}\"\n")
string(APPEND json "}\n")

# Only touch the file when something other than the time changed, so that a
# rebuild without new commits does not relink everything.
set(previous "")
if(EXISTS ${OUTPUT})
  file(READ ${OUTPUT} previous)
endif()
string(REGEX REPLACE "\"timestamp\": \"[^\"]*\"" "" previous_core "${previous}")
string(REGEX REPLACE "\"timestamp\": \"[^\"]*\"" "" json_core "${json}")
if(NOT previous_core STREQUAL json_core)
  file(WRITE ${OUTPUT} "${json}")
endif()
