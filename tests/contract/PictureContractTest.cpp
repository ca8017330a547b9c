#include <gmock/gmock.h>

#include "HostSet.h"
#include "ui/IPictures.h"

using namespace ::testing;

namespace {

class PictureContractTest : public HostContractTest {
protected:
    PictureContractTest() { m_set->BeInternalBuild(); }

    void Load(bool moving, QObject* by) {
        m_set->Pictures().Load(QString::fromStdString(m_set->HttpServer() + "/picture"), QSize(30, 20), moving, by,
                               [this](const std::shared_ptr<const Picture>& picture) { told.push_back(picture); });
    }

    void Answer(bool found) {
        const auto number = m_set->WaitForPicture();
        ASSERT_TRUE(number);
        m_set->AnswerPicture(*number, found);
    }

    bool WaitForAll(size_t count) {
        return WaitUntil([this, count] { return told.size() >= count; });
    }

    std::unique_ptr<QObject> guard = std::make_unique<QObject>();
    std::vector<std::shared_ptr<const Picture>> told;
};

TEST_F(PictureContractTest, APictureComesOnceAndLaterAndCoversTheSize) {
    Load(false, guard.get());
    EXPECT_THAT(told, IsEmpty());
    Answer(true);
    ASSERT_TRUE(WaitForAll(1));
    RunPosted();

    ASSERT_THAT(told, SizeIs(1));
    ASSERT_TRUE(told[0]);
    ASSERT_THAT(told[0]->frames, SizeIs(1));
    EXPECT_EQ(told[0]->frames[0].image.size(), QSize(30, 20));
}

TEST_F(PictureContractTest, WhereThereIsNoneItSaysSoOnce) {
    Load(true, guard.get());
    Answer(false);
    ASSERT_TRUE(WaitForAll(1));
    RunPosted();

    EXPECT_THAT(told, ElementsAre(IsNull()));
}

TEST_F(PictureContractTest, OneThatMovesHasFramesAndTheirTimes) {
    Load(true, guard.get());
    Answer(true);
    ASSERT_TRUE(WaitForAll(1));

    ASSERT_TRUE(told[0]);
    ASSERT_THAT(told[0]->frames, SizeIs(2));
    EXPECT_EQ(told[0]->frames[1].millis, 100);
}

TEST_F(PictureContractTest, NothingComesForAGuardThatIsGone) {
    QObject other;
    Load(false, guard.get());
    const auto number = m_set->WaitForPicture();
    ASSERT_TRUE(number);
    guard.reset();
    m_set->AnswerPicture(*number, true);
    Load(false, &other);
    Answer(false);

    ASSERT_TRUE(WaitForAll(1));
    RunPosted();
    EXPECT_THAT(told, ElementsAre(IsNull()));
}

TEST_F(PictureContractTest, TheSameAddressAgainIsALoadOfItsOwn) {
    Load(false, guard.get());
    Load(false, guard.get());
    Answer(true);
    Answer(false);

    ASSERT_TRUE(WaitForAll(2));
    EXPECT_NE(told[0] == nullptr, told[1] == nullptr);
}

}  // namespace
