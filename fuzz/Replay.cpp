// Runs a target over the files of its kept corpus as an ordinary test, without a fuzzer.
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <iostream>

#include "FuzzTarget.h"

namespace {

bool ReplayFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::cerr << path.toStdString() << " cannot be read\n";
        return false;
    }
    const QByteArray bytes = file.readAll();
    // Is printed before the run, so that the input is known if it ends the process.
    std::cout << file.fileName().toStdString() << ", " << bytes.size() << " bytes" << std::endl;
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.constData()), size_t(bytes.size()));
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    LLVMFuzzerInitialize(&argc, &argv);
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        QDirIterator files(QString::fromLocal8Bit(argv[i]), QDir::Files);
        while (files.hasNext()) {
            if (!ReplayFile(files.next())) {
                return 1;
            }
            ++replayed;
        }
    }
    if (replayed == 0) {
        std::cerr << "there is nothing to replay\n";
        return 1;
    }
    return 0;
}
