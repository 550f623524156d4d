#include "QuorDefs.h"

void onPatSection(QUOR_U8* section, QUOR_U32 length);

int main() {
    QUOR_U8 section[] = {0x00, 0xB0, 0x0D, 0x02, 0xE1, 0xC1, 0x00, 0x00, 0x5C, 0x20, 0xE1, 0x01, 0, 0, 0, 0};
    onPatSection(section, sizeof section);
    onPatSection(section, sizeof section - 1);
    return 0;
}
