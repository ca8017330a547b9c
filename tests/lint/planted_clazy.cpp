#include <QMap>
#include <QString>

// A list made only to be walked.
int Planted(const QMap<QString, int>& map) {
    int sum = 0;
    for (const QString& key : map.keys()) {
        sum += map[key];
    }
    return sum;
}
