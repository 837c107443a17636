#include "Services/Dos/VersionDatabaseResource.h"

// The assembler takes the file in as it is.
#if defined(__APPLE__)
__asm__(".const_data\n"
        ".globl _ludariumVersionDatabase\n"
        "_ludariumVersionDatabase:\n"
        ".incbin \"" LUDARIUM_VERSION_DATABASE "\"\n"
        ".globl _ludariumVersionDatabaseEnd\n"
        "_ludariumVersionDatabaseEnd:\n"
        ".byte 0\n"
        ".text\n");
#else
__asm__(".pushsection .rodata\n"
        ".globl ludariumVersionDatabase\n"
        "ludariumVersionDatabase:\n"
        ".incbin \"" LUDARIUM_VERSION_DATABASE "\"\n"
        ".globl ludariumVersionDatabaseEnd\n"
        "ludariumVersionDatabaseEnd:\n"
        ".byte 0\n"
        ".popsection\n");
#endif

extern "C" const char ludariumVersionDatabase[];
extern "C" const char ludariumVersionDatabaseEnd[];

namespace ludarium {

QByteArray embeddedVersionDatabase() {
    return QByteArray::fromRawData(ludariumVersionDatabase, ludariumVersionDatabaseEnd - ludariumVersionDatabase);
}

} // namespace ludarium
