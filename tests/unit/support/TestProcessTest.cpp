// A case fails on a warning of the toolkit that begins with "QObject".
#include <gtest/gtest-spi.h>

#include <QObject>
#include <thread>

using namespace ::testing;

namespace {

TEST(TestProcessTest, CaseFailsWhenAConnectionIsRefused) {
    QObject object;

    EXPECT_NONFATAL_FAILURE(QObject::connect(&object, SIGNAL(gone()), &object, SLOT(deleteLater())),
                            "The toolkit warns: QObject::connect: No such signal QObject::gone()");
}

TEST(TestProcessTest, CaseFailsWhenAnotherThreadMakesAChild) {
    QObject parent;

    EXPECT_NONFATAL_FAILURE_ON_ALL_THREADS(std::thread([&parent] { const QObject child(&parent); }).join(),
                                           "QObject: Cannot create children for a parent that is in a different");
}

TEST(TestProcessTest, WarningIsPrintedAllTheSame) {
    internal::CaptureStderr();

    EXPECT_NONFATAL_FAILURE(qWarning("QObject: one of ours"), "QObject: one of ours");

    EXPECT_EQ(internal::GetCapturedStderr(), "QObject: one of ours\n");
}

TEST(TestProcessTest, CasePassesWhenAMessageIsOfAnotherKind) {
    internal::CaptureStderr();

    qWarning("Not of a QObject");
    qDebug("QObject: no warning");

    EXPECT_EQ(internal::GetCapturedStderr(), "Not of a QObject\nQObject: no warning\n");
}

}  // namespace
