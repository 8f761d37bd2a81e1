#include <gtest/gtest.h>

#include <deque>
#include <utility>

#include "link/identity.h"
#include "link/sign_in.h"
#include "run_now.h"
#include "scripted_dialog.h"

namespace quillon::testing {
namespace {

class FakePort : public LinkPort {
 public:
  int openLinkPort() override { return openResult; }
  void closeLinkPort() override { ++closes; }
  void startTransfer(const TransferJob& job, std::function<void(TransferOutcome)> done) override {
    jobs.push_back(job);
    if (outcomes.empty()) return done(TransferOutcome{});
    TransferOutcome next = outcomes.front();
    outcomes.pop_front();
    done(next);
  }
  std::string portStatusText() const override { return "COM 1,9600, N ,8 ,1 active"; }

  int openResult = 0;
  int closes = 0;
  std::deque<TransferOutcome> outcomes;
  std::vector<TransferJob> jobs;
};

class RecordingStatus : public StatusDisplay {
 public:
  void setStatus(StatusPanel panel, const std::string& text) override {
    texts.emplace_back(static_cast<int>(panel), text);
  }
  std::vector<std::pair<int, std::string>> texts;
};

const std::string kTelvaneReply = "007B090300003E\xFD";
const Box kReadyBox{"Kestrix", "Telvane ready ?", BoxIcon::Question, BoxButtons::OkCancel,
                    BoxAnswer::Ok};

class SignInTest : public ::testing::Test {
 protected:
  int signIn() {
    TransferOutcome outcome;
    return RunNow(SignIn(m_context, m_job, outcome));
  }

  FakePort m_port;
  ScriptedDialog m_dialog;
  RecordingStatus m_status;
  ModuleLimits m_limits;
  LinkSession m_session;
  LinkContext m_context{m_port, m_dialog, m_status, m_limits, m_session};
  TransferJob m_job{TransferDirection::Download, "Messages", "AB", "", "M0002", '\0'};
};

TEST_F(SignInTest, FirstRunAsksOnceReadsTheIdentityOnceThenRunsTheJob) {
  m_port.outcomes = {{TransferStatus::Active, {kTelvaneReply}}, {TransferStatus::Active, {}}};
  EXPECT_EQ(signIn(), 0);
  ASSERT_EQ(m_dialog.boxes, std::vector<Box>{kReadyBox});
  ASSERT_EQ(m_port.jobs.size(), 2U);
  EXPECT_EQ(m_port.jobs[0].direction, TransferDirection::Upload);
  EXPECT_EQ(m_port.jobs[0].contentLabel, "Version");
  EXPECT_EQ(m_port.jobs[0].requestLetter, 'v');
  EXPECT_EQ(m_port.jobs[1].startIdentifier, "M0002");
  EXPECT_EQ(m_status.texts,
            (std::vector<std::pair<int, std::string>>{{2, "Version lesen ..."},
                                                      {2, "Upload active"},
                                                      {2, " Version-Lesen erfolgreich"},
                                                      {2, "Download active"},
                                                      {2, "OK"},
                                                      {1, "COM 1,9600, N ,8 ,1 active"}}));
  EXPECT_TRUE(m_session.identityRead);
  EXPECT_EQ(m_session.identity.version, "1.23");
  EXPECT_EQ(m_session.identity.unit, " Telvane");

  // Later transfers of the same run go straight to the job.
  EXPECT_EQ(signIn(), 0);
  EXPECT_EQ(m_dialog.boxes.size(), 1U);
  ASSERT_EQ(m_port.jobs.size(), 3U);
  EXPECT_EQ(m_port.jobs[2].direction, TransferDirection::Download);
}

TEST_F(SignInTest, ClosedPortOrDeclinedReadyQuestionRunsNothing) {
  m_port.openResult = 1;
  EXPECT_EQ(signIn(), 1);
  EXPECT_TRUE(m_dialog.boxes.empty());
  m_port.openResult = 0;
  m_dialog.answer(BoxAnswer::Cancel);
  EXPECT_EQ(signIn(), 2);
  EXPECT_TRUE(m_port.jobs.empty());
  EXPECT_EQ(m_port.closes, 1);
  EXPECT_FALSE(m_session.readyConfirmed);

  m_port.outcomes = {{TransferStatus::Active, {kTelvaneReply}}, {TransferStatus::Active, {}}};
  EXPECT_EQ(signIn(), 0);
  EXPECT_EQ(m_dialog.boxes, (std::vector<Box>{kReadyBox, kReadyBox}));
}

TEST_F(SignInTest, EndingsOfTheIdentityQueryMapToAResultOrGoOn) {
  struct Row {
    TransferStatus status;
    int result;
    std::size_t jobsRun;
    bool identityRead;
  };
  using enum TransferStatus;
  for (const auto& [status, result, jobsRun, identityRead] :
       {Row{Cancel, 3, 1, false}, Row{Timeout, 4, 1, false}, Row{NoConnection, 5, 1, false},
        // Not among the endings that stop a sign-in: the job still runs.
        Row{NoResponse, 0, 2, false},
        // A refused request leaves an empty reply, which reads as the wrong device: a version
        // conflict, so the job does not run, but the identity counts as read for this run.
        Row{Active, 7, 1, true}}) {
    SCOPED_TRACE(result);
    m_session.identityRead = false;
    m_port.jobs.clear();
    m_port.outcomes = {{status, {}}, {Active, {}}};
    EXPECT_EQ(signIn(), result);
    EXPECT_EQ(m_port.jobs.size(), jobsRun);
    EXPECT_EQ(m_session.identityRead, identityRead);
    EXPECT_EQ(m_session.identity.holdsData, identityRead);
  }
  EXPECT_EQ(m_session.identity.unit + "|" + m_session.identity.version, " Tarvos|0");
}

TEST_F(SignInTest, FailedJobLeavesThePanelsAlone) {
  m_session.readyConfirmed = true;
  m_session.identityRead = true;
  m_port.outcomes = {{TransferStatus::NoResponse, {}}};
  EXPECT_EQ(signIn(), 6);
  EXPECT_EQ(m_status.texts, (std::vector<std::pair<int, std::string>>{{2, "Download active"}}));
}

TEST(DecodeIdentity, FillsTheLabelsAndRaisesConflicts) {
  const std::string wrongDevice = "Kestrix ist auf falsches Ger\xE4t eingestellt";
  const auto phones = [](const std::string& n) {
    return "Falsche Anzahl Telefonnummern: \nEingestellt sind  60, aber im Ger\xE4t ist Platz "
           "f\xFCr " +
           n;
  };
  using Boxes = std::vector<std::string>;  // all titled "Version"
  struct Row {
    const char* name;
    std::string reply;
    std::string shown;  // version|bus|unit|function|messages|phones
    int conflicts;
    Boxes boxes;
  };
  const std::vector<Row> rows = {
      {"telvaneWith100MessagesAnd60Phones", "007B090300003E\xFD",
       "1.23| Millenium M3| Telvane| Alarmieren| 100|60", 0, Boxes{}},
      {"busFourIsEasy400", "0064040300003E", "1| EASY400| Telvane| Alarmieren| 100|60", 0, Boxes{}},
      {"busFiveIsEasy400Too", "0096050300003E", "1.5| EASY400| Telvane| Alarmieren| 100|60", 0,
       Boxes{}},
      {"busTenIsUnknown", "00960A0300003E", "1.5| unbekannt| Telvane| Alarmieren| 100|60", 0,
       Boxes{}},
      {"sizeOneIs400Messages", "007B090301013E", "1.23| Millenium M3| Telvane| Fernwirken| 400|60",
       0, Boxes{}},
      {"otherSizeIsUnknown", "007B090302023E", "1.23| Millenium M3| Telvane| DF\xDC| unbekannt|60",
       0, Boxes{}},
      {"phoneFieldTwoLeavesTheCountEmpty", "007B0903000002",
       "1.23| Millenium M3| Telvane| Alarmieren| 100|", 0, Boxes{}},
      {"otherPhoneCountConflicts", "007B0903000028",
       "1.23| Millenium M3| Telvane| Alarmieren| 100|38", 2, Boxes{phones("38")}},
      {"firmwareTwoIsNotReadable", "0002090300003E",
       "2 (nicht lesbar)| Millenium M3| Telvane| Alarmieren| 100|60", 0, Boxes{}},
      {"emptyReplyIsTheWrongDevice", "", "0| Kein Bus| Tarvos| Alarmieren| 100|", 1,
       Boxes{wrongDevice}},
      {"partialFieldReadsItsDigits", "7", "0.07| Kein Bus| Tarvos| Alarmieren| 100|", 1,
       Boxes{wrongDevice}},
      {"wrongDeviceAndWrongPhoneCount", "007B0901000020",
       "1.23| Millenium M3| Ombra| Alarmieren| 100|30", 3, Boxes{wrongDevice, phones("30")}},
      {"unknownDeviceHasNoBoxOfItsOwn", "007B0907000028",
       "1.23| Millenium M3| unbekannt| Alarmieren| 100|38", 2, Boxes{phones("38")}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    DeviceIdentity id;
    ModuleLimits limits;
    limits.lastMessageIndex = 250;  // neither of the two it may be set to
    int expectedPhones = 60;
    ScriptedDialog dialog;
    EXPECT_EQ(DecodeIdentity(row.reply, id, limits, expectedPhones, dialog), row.conflicts);
    EXPECT_EQ(id.version + "|" + id.bus + "|" + id.unit + "|" + id.firmware + "|" +
                  id.messageCount + "|" + id.phoneCount,
              row.shown);
    EXPECT_EQ(id.conflicts, row.conflicts);
    // The raw reply is shown as sent, without the end mark of the block.
    EXPECT_TRUE(row.reply.starts_with(id.raw));
    EXPECT_EQ(id.raw.find('\xFD'), std::string::npos);
    EXPECT_TRUE(id.holdsData);
    // 400 message texts allow the index 399, every other size 99.
    EXPECT_EQ(limits.lastMessageIndex, id.messageCount == " 400" ? 399 : 99);
    EXPECT_EQ(dialog.texts(), row.boxes);
    for (const auto& box : dialog.boxes) EXPECT_EQ(box.title, "Version");
  }
}

}  // namespace
}  // namespace quillon::testing
