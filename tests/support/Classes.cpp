#include "support/Classes.h"

const ClassRows& classRows() {
    static const ClassRows rows = makeClassRows();
    return rows;
}
