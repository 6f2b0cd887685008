// SPDX-License-Identifier: MIT
#include "recordings/HistoryProgram.h"

int main(int argc, char **argv) {
    return veldron::runHistoryProgram(argc, argv);
}
