#include "state/search_trail.h"

#include "state/reading.h"

namespace orvane {

std::string ReadingNameOf(const SearchSubject& subject) {
  std::string name = "tx.";
  name.append(BandWord(subject.band));
  name.append(subject.kind == SearchSubject::Kind::Level ? ".level." : ".channel.");
  name.append(std::to_string(subject.number));
  return name;
}

void SearchTrail::Forget() {
  last_.reset();
  underWay_ = false;
  for (auto& found : found_) found.clear();
  forgotten.Emit();
}

void SearchTrail::BeginBand(std::size_t band) {
  found_.at(band).clear();
  bandBegan.Emit(band);
}

void SearchTrail::Begin(const SearchSubject& subject, Decimal4 target, Decimal4 tolerance) {
  last_ = SearchStory{subject, target, tolerance};
  underWay_ = true;
  began.Emit(*last_);
}

void SearchTrail::Pass(const SearchPass& pass) {
  if (!underWay_) return;
  last_->passes.push_back(pass);
  passed.Emit(pass);
}

void SearchTrail::Accept(Integer dac, Decimal4 power, bool onTarget) {
  if (!underWay_) return;
  found_.at(last_->subject.band).push_back({last_->subject, last_->target, dac, power, onTarget});
}

void SearchTrail::End() {
  if (!underWay_) return;
  underWay_ = false;
  ended.Emit(*last_);
}

}  // namespace orvane
