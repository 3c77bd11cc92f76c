# A room of the product: a folder at the root with all its sources, a static library, and a namespace of the same name
# in `loopwise`. usage: loopwise_room(NAME [WITHOUT FILE...] [LINK TARGET...])
function(loopwise_room name)
  cmake_parse_arguments(PARSE_ARGV 1 room "" "" "WITHOUT;LINK")
  loopwise_glob(sources GLOB_RECURSE *.cpp)
  list(REMOVE_ITEM sources ${room_WITHOUT})
  add_library(loopwise_${name} STATIC EXCLUDE_FROM_ALL ${sources})
  target_compile_features(loopwise_${name} PUBLIC cxx_std_20)
  target_include_directories(loopwise_${name} PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
  # Every machine gets the same last bit: no fused multiply-add.
  target_compile_options(loopwise_${name} PRIVATE -ffp-contract=off)
  target_link_libraries(loopwise_${name} PUBLIC ${room_LINK})
  set_target_properties(loopwise_${name} PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  # A build without this sees an include that is missing.
  if(LOOPWISE_PRECOMPILE)
    target_precompile_headers(loopwise_${name} PRIVATE
      <algorithm> <array> <cmath> <functional> <map> <optional> <span> <string> <vector>)
  endif()
endfunction()
