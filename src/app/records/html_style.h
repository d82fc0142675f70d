#pragma once

#include <string_view>

namespace orvane {

/// The report's style sheet: light, dark as the desktop has it, and paper.
inline constexpr std::string_view kReportStyle = R"css(
:root{color-scheme:light dark;--page:#fff;--text:#1b1f24;--soft:#5b6570;--line:#d9dee3;--panel:#f5f7f9;
--good:#1a7f37;--doubt:#9a6700;--bad:#c6262e;--open:#0b63b0;--trace:#0b63b0;--zone:#cfe8d5}
@media (prefers-color-scheme:dark){:root{--page:#14181d;--text:#e3e8ee;--soft:#9aa5b1;--line:#333b44;--panel:#1c2229;
--good:#4cc26a;--doubt:#dba93a;--bad:#ff7069;--open:#64b1ff;--trace:#64b1ff;--zone:#234a31}}
*{box-sizing:border-box}
body{margin:0 auto;max-width:62rem;padding:1.5rem;background:var(--page);color:var(--text);
font:15px/1.45 system-ui,"Noto Sans","Nanum Gothic",sans-serif;overflow-wrap:anywhere}
h1{font-size:1.6rem;margin:.1rem 0 .2rem;line-height:1.2}
h2{font-size:1.1rem;margin:2rem 0 .6rem;border-bottom:1px solid var(--line);padding-bottom:.25rem}
h3{font-size:.95rem;margin:1rem 0 .4rem;font-weight:600}
section+.run{margin-top:2.5rem}
.run+.run{margin-top:4rem;border-top:3px solid var(--line);padding-top:2rem}
header{border-left:.5rem solid var(--tone);background:var(--panel);padding:1rem 1.25rem;border-radius:.4rem}
header p{margin:.15rem 0}.soft,.note,small{color:var(--soft)}small{font-size:.82em}
.verdict{font-size:1.5rem;font-weight:700;color:var(--tone);letter-spacing:.02em}
.reasons{margin:.4rem 0 0;padding-left:1.2rem}
.good{--tone:var(--good)}.doubtful{--tone:var(--doubt)}.bad{--tone:var(--bad)}.open{--tone:var(--open)}
.toned{color:var(--tone);font-weight:600;white-space:nowrap}
dl{display:grid;grid-template-columns:repeat(auto-fill,minmax(18.5rem,1fr));gap:.5rem 1.5rem;margin:0}
dt{color:var(--soft);font-size:.82em}dd{margin:0}
table{border-collapse:collapse;font-variant-numeric:tabular-nums;width:100%}
th,td{text-align:left;padding:.16rem .7rem .16rem 0;border-bottom:1px solid var(--line);vertical-align:middle}
thead th{color:var(--soft);font-weight:500;font-size:.85em}tbody th{font-weight:500;white-space:nowrap}
.number{text-align:right;white-space:nowrap}.outside{color:var(--bad);font-weight:700}
.limits{white-space:nowrap}.limits svg{margin-right:.4rem}.limits b{color:var(--bad)}
.unit{color:var(--soft);white-space:nowrap}.digest{font-family:ui-monospace,monospace;font-size:.85em}
.pair{columns:26rem 2;column-gap:2.5rem}.pair section{break-inside:avoid}.pair h3{margin-top:0;padding-top:.6rem}
.pair table{margin-bottom:.8rem}
.many{display:flex;flex-wrap:wrap;gap:.7rem 1rem}.many figure{width:150px}
.two{display:flex;flex-wrap:wrap;gap:1rem 1.5rem}
figure{margin:0}figcaption{font-size:.78rem;color:var(--soft);line-height:1.3}
svg{vertical-align:middle;max-width:100%}
svg line,svg polyline{fill:none;stroke-width:1}
.track,.axis{stroke:var(--line)}.grid{stroke:var(--line);stroke-width:.6!important}
.zone{fill:var(--zone)}.mark{fill:var(--good)}.mark.outside{fill:var(--bad)}.mark.doubtful{fill:var(--doubt)}
.trace{stroke:var(--trace);stroke-width:1.3!important}.dot{fill:var(--trace)}.dot.outside{fill:var(--bad)}
.end{fill:var(--good)}.end.outside{fill:var(--bad)}.limit{stroke:var(--doubt);stroke-dasharray:3 2}
.tick{font-size:8.5px;fill:var(--soft)}
pre{white-space:pre-wrap;margin:0;font:inherit}
footer{margin-top:2.5rem;color:var(--soft);font-size:.8rem;border-top:1px solid var(--line);padding-top:.5rem}
@media print{@page{margin:12mm}:root{font-size:11px;color-scheme:light;--page:#fff;--text:#000;--soft:#444;--line:#bbb;--panel:#fff;
--good:#1a7f37;--doubt:#9a6700;--bad:#c6262e;--open:#0b63b0;--trace:#0b63b0;--zone:#cfe8d5}
body{max-width:none;padding:0;font-size:10.5px}header{border:1px solid var(--line);border-left:.5rem solid var(--tone)}
.run+.run{break-before:page;border:0;margin:0;padding:0}figure,tr,header{break-inside:avoid}h2,h3{break-after:avoid}
.pair{columns:2;column-gap:1.5rem}.limits svg{width:64px}.many figure{width:112px}.two figure{width:47%}
*{print-color-adjust:exact;-webkit-print-color-adjust:exact}}
)css";

}  // namespace orvane
