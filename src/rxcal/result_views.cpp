#include "rxcal/result_views.h"

namespace orvane {

void ResultViews::Connect() {
  txResult_.Untouched().cmdTxcalClose.onClick = [this] { txResult_->Hide(); };
  rxResult_.Untouched().cmdAutoCalRxResutlsClose.onClick = [this] { rxResult_->Hide(); };
  fail_.Untouched().Command1.onClick = [this] {
    fail_->Hide();
    main_->Show();
  };
  pass_.Untouched().Command1.onClick = [this] {
    pass_->Hide();
    main_->Show();
  };
}

}  // namespace orvane
