// A host of several addresses.

#include <gtest/gtest.h>
#include <netdb.h>

#include <chrono>
#include <deque>

#include "adapters/gpib/byte_stream.h"
#include "adapters/gpib/route_session.h"
#include "adapters/loopback_instrument.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

/// As the resolver gives a host's addresses.
class Addresses {
 public:
  void Add(const sockaddr_in& place) {
    places_.push_back(place);
    Chain(AF_INET, reinterpret_cast<sockaddr*>(&places_.back()));
  }
  void AddOfAFamilyThatThisMachineLacks() { Chain(AF_MAX, nullptr); }
  [[nodiscard]] const addrinfo* First() const { return rows_.empty() ? nullptr : &rows_.front(); }

 private:
  void Chain(int family, sockaddr* place) {
    addrinfo row{};
    row.ai_family = family;
    row.ai_socktype = SOCK_STREAM;
    row.ai_addr = place;
    row.ai_addrlen = sizeof(sockaddr_in);
    rows_.push_back(row);
    if (rows_.size() > 1) rows_[rows_.size() - 2].ai_next = &rows_.back();
  }

  std::deque<sockaddr_in> places_;
  std::deque<addrinfo> rows_;
};

struct TcpConnection : testing::Test {
  /// What connecting fails with; empty when it does not.
  std::string FailureWithin(TimePoint span) {
    try {
      stream = ConnectToOneOf(addresses.First(), Deadline(span), "the instrument");
      return "";
    } catch (const RouteFailure& failure) {
      EXPECT_EQ(failure.kind, RouteFailure::Kind::kAbsent);
      return failure.what();
    }
  }
  void ExpectConnectedTo(Instrument& peer) {
    peer.Accept();
    stream.Send("*IDN?\n", Deadline(5s));
    EXPECT_EQ(peer.Received(), "*IDN?\n");
  }

  Instrument instrument;
  Addresses addresses;
  ByteStream stream;
};

TEST_F(TcpConnection, AnAddressThatIsNeverHeardOfHasItsShareOfTheTimeAndNoMore) {
  Instrument hole;
  hole.TakeNoMore();
  const Instrument third;
  addresses.Add(hole.Address());
  addresses.Add(instrument.Address());
  addresses.Add(third.Address());
  const Deadline deadline(1500ms);
  stream = ConnectToOneOf(addresses.First(), deadline, "the instrument");
  EXPECT_FALSE(deadline.Passed()) << "a third of it was the hole's";
  ExpectConnectedTo(instrument);
}

TEST_F(TcpConnection, AnAddressThatRefusesAndOneThatNoSocketFitsLeaveTheOthersToo) {
  Instrument refuses;
  const sockaddr_in nobody = refuses.Address();
  refuses.Leave();
  addresses.Add(nobody);
  addresses.AddOfAFamilyThatThisMachineLacks();
  addresses.Add(instrument.Address());
  EXPECT_EQ(FailureWithin(5s), "");
  ExpectConnectedTo(instrument);
}

TEST_F(TcpConnection, AddressesOfWhichNoneIsHeardOfTakeTheWholeTimeAndNoMore) {
  Instrument hole;
  hole.TakeNoMore();
  instrument.TakeNoMore();
  addresses.Add(hole.Address());
  addresses.Add(instrument.Address());
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(FailureWithin(200ms), "no connection within 200 ms.");
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took, 190ms);
  EXPECT_LT(took, 3s);
}

TEST_F(TcpConnection, TheLastAddressTellsWhyThereIsNone) {
  Instrument hole;
  hole.TakeNoMore();
  addresses.Add(hole.Address());
  addresses.Add(instrument.Address());
  instrument.Leave();
  EXPECT_EQ(FailureWithin(200ms), "no connection: Connection refused.");
}

}  // namespace
}  // namespace orvane::test
