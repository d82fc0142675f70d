#include <gtest/gtest.h>

#include "app/records/html_plots.h"
#include "app/records/html_report.h"
#include "app/records/reading_names.h"
#include "app/records/svg.h"
#include "records_program/sample_records.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;
using testing::Not;

std::size_t CountOf(const std::string& text, const std::string& what) {
  std::size_t count = 0;
  for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++count;
  return count;
}

TEST(HtmlReport, TellsVerdictReasonsAndIdentityFirst) {
  const std::string page = HtmlReport({SmallRun()});
  EXPECT_THAT(page, HasSubstr("<title>=K7-0001: FAIL</title>"));
  EXPECT_THAT(page, HasSubstr("<header class=\"bad\"><h1>=K7-0001</h1><p class=\"verdict\">FAIL</p>"));
  EXPECT_THAT(page, HasSubstr("<li>level 5 is &lt;outside&gt; &amp; &quot;far&quot;</li>"
                              "<li>One reading is outside its limits.</li>"));
  EXPECT_THAT(page, HasSubstr("<dt>Part</dt><dd>단말기</dd>"));
  EXPECT_THAT(page, HasSubstr("<dt>Tag lot</dt><dd>7, &quot;b&quot;</dd>"));
}

TEST(HtmlReport, LoadsNothingRunsNothingAndNeedsNothing) {
  const std::string page = HtmlReport({WholeRoad(1)});
  EXPECT_THAT(page, HasSubstr("<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'"));
  for (const char* loading :
       {"<script", "<link", "<img", "<iframe", "src=", "href=", "url(", "@import", "http://", "https://"}) {
    EXPECT_THAT(page, Not(HasSubstr(loading))) << loading;
  }
}

TEST(HtmlReport, NoTextOfARecordIsMarkup) {
  const std::string evil = "<script>alert('x')</script>\"&\x1b\xff\u202e";
  RunRecord record = SmallRun();
  record.identity = {evil, evil, evil, evil, evil, evil, evil, evil, evil, {{evil, evil}}, 0};
  record.end->verdict = evil;
  record.end->reason = evil;
  record.steps = {{evil, 0, 1, false, evil}};
  record.readings = {{evil, evil, 1, evil, 0.0, 2.0, 1},
                     {evil, "tx." + evil + ".level.5.power", 1, evil, 0.0, 2.0, 1},
                     {evil, "tx.gsm.level." + evil + ".power", 1, evil, 0.0, 2.0, 1}};
  record.passes = {{evil, 0, 1, 1, 1, 1}};
  record.boxes = {{evil, evil, evil, 0, 0.0}};
  record.documents = {{evil, evil, evil}};
  const std::string page = HtmlReport({record, record});
  EXPECT_THAT(page, Not(HasSubstr("<script")));
  EXPECT_THAT(page, Not(HasSubstr("'x'")));
  EXPECT_THAT(page, Not(HasSubstr("\x1b")));
  EXPECT_THAT(page, Not(HasSubstr("\xff")));
  EXPECT_THAT(page, Not(HasSubstr("\u202e")));
  EXPECT_THAT(page, HasSubstr("&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt;&quot;&amp;\\x1b\\xff\\u202e"));
}

TEST(HtmlReport, PutsWhatBelongsTogetherInOneRowAndMarksWhatIsOutside) {
  const std::string page = HtmlReport({SmallRun()});
  EXPECT_THAT(page, HasSubstr("<h3>Transmitter, GSM levels</h3>"));
  EXPECT_THAT(page, HasSubstr("<tr><th>5</th><td class=\"number outside\">30.5015</td>"));
  EXPECT_EQ(CountOf(page, "<b>outside</b>"), 1U);
  EXPECT_THAT(page, HasSubstr("power <small>dBm, 31.75 … 32.25</small>")) << "limits that all rows share stand above";
}

TEST(HtmlReport, HasAPlotForEachSearchAndEachBandsCodesAndCompensation) {
  const std::string page = HtmlReport({WholeRoad(1)});
  EXPECT_EQ(CountOf(page, "<svg class=\"search\""), 15U + 16U + 7U + 7U);
  for (const char* caption : {"GSM: codes over ARFCN", "DCS: codes over ARFCN", "GSM: compensation over ARFCN",
                              "DCS: compensation over ARFCN"}) {
    EXPECT_EQ(CountOf(page, std::string("<figcaption>") + caption), 1U) << caption;
  }
  EXPECT_THAT(page, HasSubstr("<h3>Battery</h3>"));
  EXPECT_THAT(page, HasSubstr("54 more channels were filled in, all inside their limits; the plot has them."));
}

TEST(HtmlReport, AFilledInChannelThatIsOutsideHasItsRow) {
  RunRecord record = SmallRun();
  record.readings = {{"receive", "rx.976.compensation", 6, "half dB", -5.0, 5.0, 1},
                     {"receive", "rx.977.compensation", 4, "half dB", -5.0, 5.0, 1}};
  const std::string page = HtmlReport({record});
  EXPECT_THAT(page, HasSubstr("<th>976</th>"));
  EXPECT_THAT(page, Not(HasSubstr("<th>977</th>")));
}

TEST(HtmlReport, SeveralRunsStandBelowATableOfThem) {
  const std::string page = HtmlReport({SmallRun(), LaterPass()});
  EXPECT_EQ(CountOf(page, "<article"), 2U);
  EXPECT_THAT(page, HasSubstr("<h2>2 runs</h2>"));
}

TEST(HtmlReport, ARunWithNothingInItIsAPageAllTheSame) {
  RunRecord record;
  record.identity.id = "019aa9a2-5c2e-7b11-8f3a-2b9d8c1e4f60";
  const std::string page = HtmlReport({record});
  EXPECT_THAT(page, HasSubstr("<h1>Run 019aa9a2-5c2e</h1><p class=\"verdict\">under way</p>"));
  EXPECT_THAT(page, Not(HasSubstr("<h2>Steps</h2>")));
}

struct Bar {
  double value;
  const char* mark;
};

TEST(LimitBar, ShowsWhereAValueLiesAndHoldsWhatIsFarOutsideAtTheEdge) {
  const Bar rows[] = {{0, "<rect class=\"mark\" x=\"44.5\""},   // in the middle of 92 pixels
                      {-5, "<rect class=\"mark\" x=\"13.8\""},  // on a limit is inside
                      {5.1, "<rect class=\"mark outside\" x=\""},
                      {-1000, "<rect class=\"mark outside\" x=\"1.5\""},
                      {1e300, "<rect class=\"mark outside\" x=\"87.5\""}};
  for (const Bar& row : rows) {
    EXPECT_THAT(LimitBar({"", "a", row.value, "", -5.0, 5.0, 0}), HasSubstr(row.mark)) << row.value;
  }
  EXPECT_EQ(LimitBar({"", "a", 1, "", {}, {}, 0}), "");
  EXPECT_THAT(LimitBar({"", "a", 1.87, "degree", {}, 5.0, 0}), HasSubstr("aria-label=\"1.87 between 0 and 5\""));
  EXPECT_THAT(LimitBar({"", "a", 1, "", 1.0, 1.0, 0}), HasSubstr("class=\"mark\""));
}

TEST(SearchPlot, WithoutATargetShowsThePower) {
  const std::vector<RecordedPass> passes{{"tx.gsm.level.5", 0, 1, 10, 0.25, 0},
                                         {"tx.gsm.level.5", 1, 2, 12, 0.25, 0}};
  const RecordedReading power{"", "tx.gsm.level.5.power", 12, "dBm", 11.75, 12.25, 0};
  EXPECT_THAT(SearchPlot(passes, &power), HasSubstr("class=\"limit\""));
  EXPECT_THAT(SearchPlot(passes, nullptr), Not(HasSubstr("class=\"limit\"")));
}

TEST(Plots, NeverHoldANumberThatIsNone) {
  const double none = std::nan("");
  RunRecord record = WholeRoad(1);
  for (RecordedReading& reading : record.readings) reading.value = none;
  for (RecordedPass& pass : record.passes) pass.dbm = HUGE_VAL;
  record.steps[0].seconds = none;
  const std::string page = HtmlReport({record});
  EXPECT_THAT(page, testing::Not(testing::ContainsRegex("=\"-?(nan|inf)")));
}

TEST(ReadingNames, ChannelsOfOneBandLieInTheOrderOfTheirFrequencies) {
  EXPECT_EQ(BandOfChannel(512), "dcs");
  EXPECT_EQ(BandOfChannel(885), "dcs");
  EXPECT_EQ(BandOfChannel(975), "gsm");
  EXPECT_EQ(BandOfChannel(124), "gsm");
  EXPECT_LT(PlaceOfChannel(975), PlaceOfChannel(1023));
  EXPECT_LT(PlaceOfChannel(1023), PlaceOfChannel(0));
  EXPECT_EQ(RxChannel("rx.975.level", "level"), 975);
  EXPECT_EQ(RxChannel("rx.gsm.gmagic", "gmagic"), std::nullopt);
  EXPECT_EQ(RxChannel("rx.97x.level", "level"), std::nullopt);
}

TEST(Ticks, AreRoundNumbersWithinTheRange) {
  EXPECT_EQ(Ticks(0, 10, 5), (std::vector<double>{0, 2, 4, 6, 8, 10}));
  EXPECT_EQ(Ticks(-49, 124, 6), (std::vector<double>{0, 50, 100}));
  EXPECT_EQ(Ticks(1, 1, 5), std::vector<double>{});
}

}  // namespace
}  // namespace orvane::test
