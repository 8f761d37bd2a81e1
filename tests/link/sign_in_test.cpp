#include <gtest/gtest.h>

#include <deque>
#include <utility>

#include "link/sign_in.h"
#include "scripted_dialog.h"

namespace quillon::testing {
namespace {

class FakePort : public LinkPort {
 public:
  int openLinkPort() override { return openResult; }
  void closeLinkPort() override { ++closes; }
  TransferOutcome runTransfer(const TransferJob& job) override {
    jobs.push_back(job);
    if (outcomes.empty()) return TransferOutcome{job.title, {}};
    TransferOutcome next = outcomes.front();
    outcomes.pop_front();
    return next;
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

TransferOutcome left(std::string title, std::string received = {}) {
  TransferOutcome outcome;
  outcome.title = std::move(title);
  outcome.received[0] = std::move(received);
  return outcome;
}

const std::string kTelvaneReply = "007B090300003E\xFD";
const Box kReadyBox{"Kestrix", "Telvane ready ?", BoxIcon::Question, BoxButtons::OkCancel,
                    BoxAnswer::Ok};

class SignInTest : public ::testing::Test {
 protected:
  int signIn() {
    TransferOutcome outcome;
    return SignIn(m_context, m_job, outcome);
  }

  FakePort m_port;
  ScriptedDialog m_dialog;
  RecordingStatus m_status;
  ModuleLimits m_limits;
  LinkSession m_session;
  LinkContext m_context{m_port, m_dialog, m_status, m_limits, m_session};
  TransferJob m_job{"Download active", "Messages", "AB", "", "M0002", '\0'};
};

TEST_F(SignInTest, FirstRunAsksOnceReadsTheIdentityOnceThenRunsTheJob) {
  m_port.outcomes = {left("Upload active", kTelvaneReply), left("Download active")};
  EXPECT_EQ(signIn(), 0);
  ASSERT_EQ(m_dialog.boxes, std::vector<Box>{kReadyBox});
  ASSERT_EQ(m_port.jobs.size(), 2U);
  EXPECT_EQ(m_port.jobs[0].title, "Upload active");
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
  EXPECT_EQ(m_port.jobs[2].title, "Download active");
}

TEST_F(SignInTest, DeclinedReadyQuestionRunsNothingAndIsAskedAgain) {
  m_dialog.answer(BoxAnswer::Cancel);
  EXPECT_EQ(signIn(), 2);
  EXPECT_TRUE(m_port.jobs.empty());
  EXPECT_EQ(m_port.closes, 1);
  EXPECT_FALSE(m_session.readyConfirmed);

  m_port.outcomes = {left("Upload active", kTelvaneReply), left("Download active")};
  EXPECT_EQ(signIn(), 0);
  EXPECT_EQ(m_dialog.boxes, (std::vector<Box>{kReadyBox, kReadyBox}));
}

TEST_F(SignInTest, PortThatCannotBeOpenedAsksNothing) {
  m_port.openResult = 1;
  EXPECT_EQ(signIn(), 1);
  EXPECT_TRUE(m_dialog.boxes.empty());
  EXPECT_TRUE(m_port.jobs.empty());
}

TEST_F(SignInTest, EndingsOfTheIdentityQueryMapToAResultOrGoOn) {
  struct Row {
    std::string title;
    int result;
    std::size_t jobsRun;
    bool identityRead;
  };
  for (const auto& [title, result, jobsRun, identityRead] :
       {Row{"Cancel", 3, 1, false}, Row{"Timeout", 4, 1, false}, Row{"No connection", 5, 1, false},
        // Not among the endings that stop a sign-in: the job still runs.
        Row{"No response", 0, 2, false},
        // A refused request leaves an empty reply, which reads as the wrong device: a version
        // conflict, so the job does not run, but the identity counts as read for this run.
        Row{"Upload active", 7, 1, true}}) {
    m_session.identityRead = false;
    m_port.jobs.clear();
    m_port.outcomes = {left(title), left("Download active")};
    EXPECT_EQ(signIn(), result) << title;
    EXPECT_EQ(m_port.jobs.size(), jobsRun) << title;
    EXPECT_EQ(m_session.identityRead, identityRead) << title;
    EXPECT_EQ(m_session.identity.holdsData, identityRead) << title;
  }
  EXPECT_EQ(m_session.identity.unit + "|" + m_session.identity.version, " Tarvos|0");
}

TEST_F(SignInTest, FailedJobLeavesThePanelsAlone) {
  m_session.readyConfirmed = true;
  m_session.identityRead = true;
  m_port.outcomes = {left("No response")};
  EXPECT_EQ(signIn(), 6);
  EXPECT_EQ(m_status.texts, (std::vector<std::pair<int, std::string>>{{2, "Download active"}}));
}

}  // namespace
}  // namespace quillon::testing
