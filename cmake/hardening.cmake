# The hardening flags of a Debian build. Sanitizers bring checks of their own, which these would hide.
set(hardening_default ON)
if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  set(hardening_default OFF)
endif()
option(LOOPWISE_HARDENING "Build the library with Debian's hardening flags" ${hardening_default})

if(LOOPWISE_HARDENING)
  target_compile_options(loopwise_objects PRIVATE
    -fstack-protector-strong -Wformat -Werror=format-security
    # Fortified functions need an optimised build.
    $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
  target_link_options(loopwise PRIVATE LINKER:-z,relro LINKER:-z,now)
endif()
