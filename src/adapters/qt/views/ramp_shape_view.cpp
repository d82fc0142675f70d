#include "adapters/qt/views/ramp_shape_view.h"

#include <QCategoryAxis>
#include <QLegend>
#include <QLineSeries>
#include <QPointer>
#include <QScatterSeries>
#include <QValueAxis>
#include <algorithm>

#include "adapters/qt/views/chart_view.h"

namespace orvane {
namespace {

constexpr int kBoxes = 16;
/// The burst itself lies between the two parts.
constexpr int kDownFrom = kBoxes + 2;
constexpr int kHighest = 31;

class RampShapeView final : public ChartView {
 public:
  RampShapeView(RampEditorFace& face, QWidget* parent)
      : ChartView(parent), up_{face.txtUP, 0}, down_{face.txtDN, kDownFrom} {
    setAccessibleName(tr("Ramp shape"));
    // A wide and low chart has its room beside it.
    chart()->legend()->setAlignment(Qt::AlignRight);
    AddBoxAxis();
    values_ = AddAxis(Qt::AlignLeft, tr("Value"));
    values_->setLabelFormat("%d");
    Prepare(up_, tr("Up"), QScatterSeries::MarkerShapeCircle);
    Prepare(down_, tr("Down"), QScatterSeries::MarkerShapeRectangle);
  }

 private:
  struct Part {
    const ControlArray<TextBox>& boxes;
    int from;
    QScatterSeries* marks = nullptr;
    /// One for each stretch without a gap; at the most every other box is a stretch.
    std::array<QLineSeries*, kBoxes / 2> stretches{};
  };

  void AddBoxAxis() {
    boxAxis_ = new QCategoryAxis;
    boxAxis_->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
    boxAxis_->setRange(-0.5, kDownFrom + kBoxes - 0.5);
    for (const int box : {0, 5, 10, 15}) boxAxis_->append("UP " + QString::number(box), box);
    for (const int box : {0, 5, 10, 15}) boxAxis_->append("DN " + QString::number(box), kDownFrom + box);
    chart()->addAxis(boxAxis_, Qt::AlignBottom);
  }

  void Prepare(Part& part, const QString& name, QScatterSeries::MarkerShape shape) {
    for (QLineSeries*& stretch : part.stretches) {
      stretch = Add(new QLineSeries, "", {boxAxis_, values_});
    }
    part.marks = Add(new QScatterSeries, name, {boxAxis_, values_});
    part.marks->setMarkerShape(shape);
    part.marks->setMarkerSize(7);
    for (const auto& box : part.boxes) {
      box->changed.Connect([view = QPointer(this)] {
        if (view) view->Touch();
      });
    }
  }

  void Draw() override {
    lowest_ = 0;
    highest_ = kHighest;
    DrawPart(up_);
    DrawPart(down_);
    values_->setRange(lowest_, highest_ + 1);
    values_->setTickType(QValueAxis::TicksDynamic);
    values_->setTickInterval(highest_ - lowest_ > 2 * kHighest ? RoundStep(highest_ - lowest_, 4) : 8);
  }

  void DrawPart(Part& part) {
    QList<QPointF> marks;
    std::array<QList<QPointF>, kBoxes / 2> stretches;
    std::size_t stretch = 0;
    for (std::size_t i = 0; i < kBoxes; ++i) {
      bool isNumber = false;
      const int value = QString::fromStdString(part.boxes[i]->Text()).toInt(&isNumber);
      if (!isNumber) {
        if (!stretches[stretch].isEmpty()) ++stretch;
        continue;
      }
      marks.append({part.from + static_cast<double>(i), static_cast<double>(value)});
      stretches[stretch].append(marks.back());
      lowest_ = std::min(lowest_, value);
      highest_ = std::max(highest_, value);
    }
    part.marks->replace(marks);
    for (std::size_t k = 0; k < stretches.size(); ++k) part.stretches[k]->replace(stretches[k]);
  }

  void Dress(const ChartColours& colours) override {
    DressPart(up_, colours.first);
    DressPart(down_, colours.second);
  }

  static void DressPart(Part& part, const QColor& colour) {
    part.marks->setColor(colour);
    part.marks->setBorderColor(colour);
    for (QLineSeries* stretch : part.stretches) stretch->setPen(QPen(colour, 2));
  }

  Part up_;
  Part down_;
  QCategoryAxis* boxAxis_ = nullptr;
  QValueAxis* values_ = nullptr;
  int lowest_ = 0;
  int highest_ = kHighest;
};

}  // namespace

QWidget* MakeRampShapeView(RampEditorFace& face, QWidget* parent) { return new RampShapeView(face, parent); }

}  // namespace orvane
