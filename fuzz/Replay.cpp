// Runs a target over the files of its kept corpus as an ordinary test, without a fuzzer. With --cycles N it runs N
// inputs more, and the heap must not grow.
#include <malloc.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QVector>
#include <iostream>

#include "FuzzTarget.h"

namespace {

void Run(const QByteArray& input) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.constData()), size_t(input.size()));
}

bool ReadFiles(const QString& folder, QVector<QByteArray>& inputs) {
    QDirIterator files(folder, QDir::Files);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly)) {
            std::cerr << file.fileName().toStdString() << " cannot be read\n";
            return false;
        }
        inputs << file.readAll();
        // Is printed before the run, so that the input is known if it ends the process.
        std::cout << file.fileName().toStdString() << ", " << inputs.last().size() << " bytes" << std::endl;
        Run(inputs.last());
    }
    return true;
}

// The first rounds fill caches that stay.
bool KeepsTheHeap(const QVector<QByteArray>& inputs, long cycles) {
    constexpr int kWarmRounds = 50;
    for (int round = 0; round < kWarmRounds; ++round) {
        std::for_each(inputs.begin(), inputs.end(), Run);
    }
    const size_t before = mallinfo2().uordblks;
    for (long cycle = 0; cycle < cycles; cycle += inputs.size()) {
        std::for_each(inputs.begin(), inputs.end(), Run);
    }
    const size_t after = mallinfo2().uordblks;
    std::cout << cycles << " cycles, heap growth " << ptrdiff_t(after - before) << " bytes\n";
    return after <= before;
}

}  // namespace

int main(int argc, char** argv) {
    LLVMFuzzerInitialize(&argc, &argv);
    long cycles = 0;
    QVector<QByteArray> inputs;
    for (int i = 1; i < argc; ++i) {
        if (qstrcmp(argv[i], "--cycles") == 0 && i + 1 < argc) {
            cycles = QByteArray(argv[++i]).toLong();
        } else if (!ReadFiles(QString::fromLocal8Bit(argv[i]), inputs)) {
            return 1;
        }
    }
    if (inputs.isEmpty()) {
        std::cerr << "there is nothing to replay\n";
        return 1;
    }
    return cycles == 0 || KeepsTheHeap(inputs, cycles) ? 0 : 1;
}
