# Finds what the chosen parts are built on, all of it at once. Nothing is left out of a build silently: what is missing
# stops it, with the line that installs it.
set(missing_packages "")
set(parts_without "")

function(loopwise_need option found package)
  if(NOT ${found})
    set(missing_packages ${missing_packages} ${package} PARENT_SCOPE)
    set(parts_without ${parts_without} -D${option}=OFF PARENT_SCOPE)
  endif()
endfunction()

if(LOOPWISE_PROGRAM)
  find_package(Threads REQUIRED)
  find_package(CLI11 QUIET)
  loopwise_need(LOOPWISE_PROGRAM CLI11_FOUND libcli11-dev)
  find_package(nlohmann_json QUIET)
  loopwise_need(LOOPWISE_PROGRAM nlohmann_json_FOUND nlohmann-json3-dev)
  find_package(ZLIB QUIET)
  loopwise_need(LOOPWISE_PROGRAM ZLIB_FOUND zlib1g-dev)
  find_path(GEMMI_INCLUDE_DIR gemmi/mmread.hpp)
  loopwise_need(LOOPWISE_PROGRAM GEMMI_INCLUDE_DIR gemmi-dev)
  find_path(PEGTL_INCLUDE_DIR tao/pegtl.hpp)
  loopwise_need(LOOPWISE_PROGRAM PEGTL_INCLUDE_DIR tao-pegtl-dev)
  find_file(LOOPWISE_THREE_JS three.min.js PATHS /usr/share/javascript/three NO_DEFAULT_PATH)
  loopwise_need(LOOPWISE_PROGRAM LOOPWISE_THREE_JS libjs-three)
  mark_as_advanced(GEMMI_INCLUDE_DIR PEGTL_INCLUDE_DIR LOOPWISE_THREE_JS)
endif()
if(LOOPWISE_TESTS)
  find_package(GTest QUIET)
  loopwise_need(LOOPWISE_TESTS GTest_FOUND libgtest-dev)
  if(LOOPWISE_BENCHMARKS)
    find_package(benchmark QUIET)
    loopwise_need(LOOPWISE_BENCHMARKS benchmark_FOUND libbenchmark-dev)
  endif()
endif()

if(missing_packages)
  list(REMOVE_DUPLICATES parts_without)
  list(JOIN missing_packages " " missing_packages)
  list(JOIN parts_without " " parts_without)
  message(FATAL_ERROR "Debian packages are missing. Install them:\n"
    "  sudo apt-get install --no-install-recommends ${missing_packages}\n"
    "or build without what needs them: cmake ${parts_without} ...")
endif()

if(LOOPWISE_PROGRAM)
  # Of headers only. gemmi holds vectors of incomplete types, which clang++ 14 takes in C++17 but not in C++20: give
  # what links this CXX_STANDARD 17.
  add_library(loopwise_gemmi INTERFACE)
  target_include_directories(loopwise_gemmi SYSTEM INTERFACE ${GEMMI_INCLUDE_DIR} ${PEGTL_INCLUDE_DIR})
  target_link_libraries(loopwise_gemmi INTERFACE ZLIB::ZLIB)
endif()
