#include "app/modStart.h"

#include <QApplication>

namespace modStart {
int Sub_Main(int argc, char** argv) {
    QApplication app(argc, argv);
    return 0;
}
} // namespace modStart
