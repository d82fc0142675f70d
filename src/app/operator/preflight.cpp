#include "app/operator/preflight.h"

#include <unistd.h>

#include <QCoreApplication>
#include <chrono>
#include <filesystem>

#include "adapters/qt/appearance.h"
#include "app/desk.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

struct PreflightWords {
  Q_DECLARE_TR_FUNCTIONS(Preflight)
};

class Look {
 public:
  explicit Look(const PreflightPlaces& places) : at_(places) {}

  std::vector<Lack> All() {
    Tables();
    Instruments();
    Line();
    Records();
    LossesAge();
    return std::move(lacks_);
  }

 private:
  void Tables() {
    for (const std::string* damage : {&at_.state.rf.damage, &at_.state.ramp.damage, &at_.state.cal.lossDamage}) {
      if (!damage->empty())
        lacks_.push_back({ToQt(*damage), PreflightWords::tr("Call an engineer: a sound file is needed.")});
    }
  }

  void Instruments() {
    const QString press = PreflightWords::tr("Switch it on and let the station initialize it.");
    OrvaneMain& main = at_.panels.main;
    if (!at_.state.testSet.TestSetReady) {
      lacks_.push_back(
          {PreflightWords::tr("The test set is not initialized."), press, true, &main.cmdInstrumentInitialize});
    }
    if (!at_.state.charger.PSReady || at_.state.charger.powerError) {
      lacks_.push_back({PreflightWords::tr("The supply is not initialized."), press, true, &main.cmdPSInitialize});
    }
    if (!at_.state.charger.LoaderReady || at_.state.charger.loaderError) {
      lacks_.push_back(
          {PreflightWords::tr("The load is not initialized."), press, true, &at_.panels.baseBand.load.initialize});
    }
  }

  void Line() {
    if (at_.device.empty()) return;
    std::error_code unknown;
    const QString device = ToQt(at_.device);
    if (!fs::exists(at_.device, unknown)) {
      lacks_.push_back({PreflightWords::tr("The line to the phone, %1, is not there.").arg(device),
                        PreflightWords::tr("Plug its adapter in.")});
    } else if (::access(at_.device.c_str(), R_OK | W_OK) != 0) {
      lacks_.push_back({PreflightWords::tr("The line to the phone, %1, may not be opened.").arg(device),
                        PreflightWords::tr("Call an engineer: this user needs the rights to it.")});
    }
  }

  void Records() {
    if (at_.records == nullptr || !at_.records->Last() || at_.records->Last()->fault.empty()) return;
    lacks_.push_back({PreflightWords::tr("The records of the runs cannot be kept: %1")
                          .arg(ToQt(OneLine(at_.records->Last()->fault))),
                      PreflightWords::tr("Call an engineer. It harms no phone."), false});
  }

  void LossesAge() {
    if (!at_.lossesDays) return;
    std::error_code unknown;
    std::string path = at_.files.SystemPath(kCableLossFileName);
    if (!fs::exists(path, unknown)) path = at_.files.TempPath(kCableLossFileName);
    const auto written = fs::last_write_time(path, unknown);
    if (unknown) return;
    const auto age =
        std::chrono::duration_cast<std::chrono::hours>(fs::file_time_type::clock::now() - written).count() / 24;
    if (age <= *at_.lossesDays) return;
    lacks_.push_back({PreflightWords::tr("The losses of the cables were measured %1 days ago, %2 are allowed.")
                          .arg(age)
                          .arg(*at_.lossesDays),
                      PreflightWords::tr("Call an engineer: they are to be measured anew."), false});
  }

  const PreflightPlaces& at_;
  std::vector<Lack> lacks_;
};

}  // namespace

std::vector<Lack> LacksAheadOfAUnit(const PreflightPlaces& places) { return Look(places).All(); }

}  // namespace orvane
