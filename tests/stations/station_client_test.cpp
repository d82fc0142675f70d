// A client of a station's port, with a stand-in for the station.

#include "app/stations/station_client.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLocalServer>
#include <QTemporaryDir>
#include <QTest>

#include "app/stations/supervised_station.h"

namespace orvane::test {
namespace {

using Json = nlohmann::ordered_json;
using testing::ElementsAre;

constexpr int kLongMs = 60000;

/// The station's end: notes the methods that it is asked, and says what the test wants.
struct StandIn {
  explicit StandIn(const QString& path) {
    QObject::connect(&server, &QLocalServer::newConnection, [this] {
      peer = server.nextPendingConnection();
      QObject::connect(peer, &QLocalSocket::readyRead, [this] {
        while (peer->canReadLine()) Take(Json::parse(peer->readLine().toStdString()));
      });
    });
    EXPECT_TRUE(server.listen(path));
  }
  void Take(const Json& request) {
    methods.push_back(request["method"]);
    if (request["method"] == "subscribe") topics = request["params"]["topics"];
    const Json answer = request["method"] == "click"
                            ? Json{{"jsonrpc", "2.0"}, {"id", request["id"]}, {"error", {{"code", clickError}}}}
                            : Json{{"jsonrpc", "2.0"}, {"id", request["id"]}, {"result", {{"serial", serial}}}};
    Say(answer.dump() + "\n");
  }
  void Say(const std::string& bytes) const {
    peer->write(bytes.data(), static_cast<qint64>(bytes.size()));
    peer->flush();
  }
  void Tell(const std::string& method, const Json& params) const {
    Say(Json{{"jsonrpc", "2.0"}, {"method", method}, {"params", params}}.dump() + "\n");
  }

  QLocalServer server;
  QLocalSocket* peer = nullptr;
  std::vector<std::string> methods;
  Json topics;
  std::string serial = "A-1";
  int clickError = -32006;
};

class StationClientTest : public testing::Test {
 protected:
  template <class Come>
  static void Await(const Come& come) {
    ASSERT_TRUE(QTest::qWaitFor(come, kLongMs));
  }
  QTemporaryDir folder_;
  QString path_ = folder_.filePath("1");
};

TEST_F(StationClientTest, ComesWhenTheStationListensAndAgainWhereItWasLost) {
  StationClient client(path_);
  int times = 0;
  client.onConnected = [&] { ++times; };
  client.Begin();
  QTest::qWait(250);
  EXPECT_EQ(times, 0);
  {
    const StandIn station(path_);
    Await([&] { return times == 1; });
  }
  Await([&] { return !client.IsConnected(); });
  const StandIn station(path_);
  Await([&] { return times == 2; });
  client.End();
  EXPECT_FALSE(client.IsConnected());
}

TEST_F(StationClientTest, HearsWhatComesInPiecesAndPassesOverWhatIsNoMessage) {
  const StandIn station(path_);
  StationClient client(path_);
  std::vector<std::string> told;
  client.onTold = [&](const std::string& method, const Json& params) { told.push_back(method + params.dump()); };
  client.Begin();
  Await([&] { return station.peer != nullptr; });
  station.Say("no json\n[1]\n{\"id\":77,\"result\":{}}\n{\"id\":{},\"result\":1}\n{\"meth");
  QTest::qWait(20);
  station.Say("od\":\"step\",\"params\":{\"name\":\"save\"}}\n{\"method\":7}\n{\"method\":\"exit\"}\n");
  Await([&] { return told.size() == 2; });
  EXPECT_THAT(told, ElementsAre(R"(step{"name":"save"})", "exit{}"));
}

TEST_F(StationClientTest, HearsTheLastWordsOfAStationThatHasEnded) {
  const StandIn station(path_);
  StationClient client(path_);
  int told = 0;
  client.onTold = [&](const std::string&, const Json&) { ++told; };
  client.Begin();
  Await([&] { return station.peer != nullptr && client.IsConnected(); });
  for (int i = 0; i < 100; ++i) station.Tell("step", {{"name", "save"}, {"state", "began"}});
  station.peer->waitForBytesWritten();
  client.End();
  EXPECT_EQ(told, 100);
}

/// A station whose process does nothing and whose port is a stand-in's.
struct Supervised {
  explicit Supervised(const QString& path)
      : port(path), station([path] {
          return PlannedStation{"Line 1", {"/bin/sleep", "1000"}, path};
        }) {
    station.Start();
  }
  StandIn port;
  SupervisedStation station;
};

TEST_F(StationClientTest, AStationIsAskedForItsStepsAndItsUnit) {
  Supervised on(path_);
  Await([&] { return on.station.Sight().unit == "A-1"; });
  EXPECT_EQ(on.port.topics, Json({"step"}));
  EXPECT_EQ(on.station.Sight().stands, StationSight::Stands::Idle);
  on.port.serial = "A-2";
  Await([&] { return on.station.Sight().unit == "A-2"; });

  on.port.Tell("step", {{"name", "receive"}, {"state", "began"}});
  Await([&] { return on.station.Sight().stands == StationSight::Stands::InRun; });
  on.port.serial = "A-3";
  const auto asked = on.port.methods.size();
  QTest::qWait(1200);
  EXPECT_EQ(on.port.methods.size(), asked) << "within a run it is left alone";
  EXPECT_EQ(on.station.Sight().unit, "A-2");
}

TEST_F(StationClientTest, ABoxIsOnTheTileForAsLongAsItIsOpenAtTheStation) {
  Supervised on(path_);
  Await([&] { return on.station.Sight().unit == "A-1"; });
  on.port.Tell("box", {{"id", 1}, {"text", "Are you ready?"}});
  Await([&] { return on.station.Sight().box == "Are you ready?"; });
  Await([&] { return std::count(on.port.methods.begin(), on.port.methods.end(), "click") >= 2; });
  EXPECT_EQ(on.station.Sight().box, "Are you ready?");
  on.port.clickError = -32001;
  Await([&] { return on.station.Sight().box.isEmpty(); });
}

}  // namespace
}  // namespace orvane::test
