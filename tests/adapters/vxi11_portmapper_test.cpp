// Where a VXI-11 server is, when its port is not given.

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

#include "adapters/gpib/vxi11_gpib_session.h"
#include "adapters/vxi11_rig.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

/// A host that takes no connection and refuses none: its queue of connections is full.
class BlackHole {
 public:
  BlackHole() : listener_(::socket(AF_INET, SOCK_STREAM, 0)) {
    place_.sin_family = AF_INET;
    place_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(listener_, reinterpret_cast<const sockaddr*>(&place_), sizeof place_);
    ::listen(listener_, 0);
    socklen_t size = sizeof place_;
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&place_), &size);
    for (int& filler : fillers_) {
      filler = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
      ::connect(filler, reinterpret_cast<const sockaddr*>(&place_), sizeof place_);
    }
  }
  BlackHole(const BlackHole&) = delete;
  BlackHole& operator=(const BlackHole&) = delete;
  ~BlackHole() {
    for (const int filler : fillers_) ::close(filler);
    ::close(listener_);
  }
  [[nodiscard]] int Port() const { return ntohs(place_.sin_port); }

 private:
  int listener_;
  sockaddr_in place_{};
  std::array<int, 4> fillers_{};
};

class Portmapper : public Vxi11 {
 protected:
  std::string FailureOf(Vxi11Place place, int ibsta) {
    Vxi11GpibSession session(5, "vxi11:" + place.host, std::move(place));
    const auto error = ErrorOf([&] { session.Write("*IDN?", 300ms); });
    if (!error) return "none";
    EXPECT_EQ(error->ibsta, ibsta);
    return error->what();
  }
  static Vxi11Place Asking(int portmapper) { return {"127.0.0.1", {}, "inst0", "the instrument", portmapper}; }
};

TEST_F(Portmapper, IsAskedForThePortWhenNoneIsGiven) {
  Words asked;
  Play({[](GatewayConnection& client) {
    MakeLink(client);
    AnswerMessage(client, "ok\n");
  }});
  ScriptedGateway portmapper({[&](GatewayConnection& client) {
    asked = client.NextCall().value_or(Words());
    client.Answer({static_cast<std::uint32_t>(gateway_->Port())});
  }});
  Vxi11GpibSession session(5, "vxi11:127.0.0.1", Asking(portmapper.Port()));
  session.Write("*IDN?", 1s);
  EXPECT_EQ(session.Read(1000, 1s), "ok\n");
  portmapper.Join();
  // The portmapper's program in version 2, its third procedure: core channel, version 1, over TCP (6).
  EXPECT_EQ(Words(asked.begin() + 1, asked.end()), (Words{0, 2, 100000, 2, 3, 0, 0, 0, 0, 0x0607AF, 1, 6, 0}));
}

TEST_F(Portmapper, ThatKnowsNoServerIsTold) {
  ScriptedGateway portmapper({[](GatewayConnection& client) {
    if (client.NextCall()) client.Answer({0});
  }});
  EXPECT_THAT(FailureOf(Asking(portmapper.Port()), 0x8000),
              HasSubstr("the portmapper knows of no VXI-11 server there."));
}

TEST_F(Portmapper, ThatNeverAnswersIsATimeOut) {
  ScriptedGateway portmapper({[](GatewayConnection& client) { client.AwaitHangUp(); }});
  const auto took = TimeOf([&] {
    EXPECT_THAT(FailureOf(Asking(portmapper.Port()), 0xC000),
                HasSubstr("the portmapper did not answer within 300 ms."));
  });
  EXPECT_LT(took, 2s);
}

TEST_F(Portmapper, OrGatewayThatRefusesIsAbsent) {
  int port = 0;
  {
    const ScriptedGateway gone({});
    port = gone.Port();
  }
  EXPECT_THAT(FailureOf(Asking(port), 0x8000), HasSubstr("Connection refused"));
  EXPECT_THAT(FailureOf({"127.0.0.1", port, "inst0", "the instrument"}, 0x8000), HasSubstr("Connection refused"));
}

TEST_F(Portmapper, OrGatewayInABlackHoleIsAbsentInItsTime) {
  const BlackHole hole;
  for (const Vxi11Place& place :
       {Asking(hole.Port()), Vxi11Place{"127.0.0.1", hole.Port(), "inst0", "the instrument"}}) {
    const auto took = TimeOf([&] { EXPECT_THAT(FailureOf(place, 0x8000), HasSubstr("no connection within")); });
    EXPECT_GE(took, 300ms);
    EXPECT_LT(took, 2s);
  }
}

}  // namespace
}  // namespace orvane::test
