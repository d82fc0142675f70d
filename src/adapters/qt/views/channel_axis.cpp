#include "adapters/qt/views/channel_axis.h"

namespace orvane {

QCategoryAxis* MakeChannelAxis() {
  auto* axis = new QCategoryAxis;
  axis->setTitleText(QCategoryAxis::tr("Channel (ARFCN)"));
  axis->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
  axis->setRange(-0.08, kChannelSpans.back().from + kChannelSpans.back().length + 0.08);
  for (const ChannelSpan& span : kChannelSpans) {
    const int middle = (span.first + span.last) / 2;
    for (const int channel : {span.first, middle, span.last}) {
      axis->append(QString::number(channel), *PlaceOf(span, channel));
    }
  }
  return axis;
}

}  // namespace orvane
