#include "draw/page/assets.hpp"

// The assembler reads the file into the program's constants: both compilers take this on every Linux, and no source
// has to be made of it first.
#define LOOPWISE_EMBED(name, path)                                                                                     \
    asm(".pushsection .rodata\n"                                                                                       \
        "loopwise_" #name ":\n.incbin \"" path "\"\n"                                                                  \
        "loopwise_" #name "_end:\n.byte 0\n.popsection\n");                                                            \
    extern "C" __attribute__((visibility("hidden"))) const char loopwise_##name[], loopwise_##name##_end[];            \
    std::string_view loopwise::draw::assets::name() {                                                                  \
        return {loopwise_##name, static_cast<std::size_t>(loopwise_##name##_end - loopwise_##name)};                   \
    }

LOOPWISE_EMBED(page_html, LOOPWISE_PAGE "page.html")
LOOPWISE_EMBED(page_css, LOOPWISE_PAGE "page.css")
LOOPWISE_EMBED(page_js, LOOPWISE_PAGE "page.js")
LOOPWISE_EMBED(three_js, LOOPWISE_THREE_JS)
