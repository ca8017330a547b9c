#include "core/Random.h"

#include <QRandomGenerator>

uint32_t CRandom::Next() {
    return QRandomGenerator::global()->generate();
}
