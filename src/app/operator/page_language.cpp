#include "app/operator/page_language.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

// The translations lie in a library: nothing else draws them into the program. The toolkit's macro declares what it
// calls where it stands, so that it has to stand outside of all namespaces.
static void HaveTranslations() { Q_INIT_RESOURCE(operator_languages); }

namespace orvane {

void Speak(std::optional<Language> wished) {
  static QTranslator translator;
  QCoreApplication::removeTranslator(&translator);
  const bool isKorean = wished ? *wished == Language::Korean : QLocale::system().language() == QLocale::Korean;
  QLocale::setDefault(isKorean ? QLocale(QLocale::Korean, QLocale::SouthKorea) : QLocale(QLocale::English));
  if (!isKorean) return;
  HaveTranslations();
  if (translator.load(QStringLiteral(":/languages/korean.qm"))) QCoreApplication::installTranslator(&translator);
}

}  // namespace orvane
