#include "demo/DemoData.h"

// The assembler takes the data in as they are; as a C++ array five megabytes would take the compiler a minute.
#if defined(__APPLE__)
__asm__(".const_data\n"
        ".globl _ludariumDemoData\n"
        ".p2align 4\n"
        "_ludariumDemoData:\n"
        ".incbin \"" LUDARIUM_DEMO_RCC "\"\n"
        ".text\n");
#else
__asm__(".pushsection .rodata\n"
        ".globl ludariumDemoData\n"
        ".balign 16\n"
        "ludariumDemoData:\n"
        ".incbin \"" LUDARIUM_DEMO_RCC "\"\n"
        ".popsection\n");
#endif

extern "C" const unsigned char ludariumDemoData[];

namespace ludarium::demo {

const unsigned char *demoData() {
    return ludariumDemoData;
}

} // namespace ludarium::demo
