#include "app/modStart.h"

int main(int argc, char** argv) {
    return modStart::Sub_Main(argc, argv);
}
