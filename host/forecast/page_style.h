#pragma once

namespace host::forecast {

/// The style of the forecast's page.
inline constexpr const char* kPageStyle = R"css(
:root { color-scheme: light dark;
  --page: #f4f6f7; --card: #fff; --ink: #17232b; --soft: #5b6b75; --rule: #dde3e6;
  --calendar: #17806d; --meter: #d98e1f; --hover: #17232b14;
  --s0: #eceff1; --s1: #cdebe3; --s2: #9ad7c7; --s3: #62bda8; --s4: #2f9c86; --s5: #147564; --s6: #084a40; }
@media (prefers-color-scheme: dark) { :root {
  --page: #10171b; --card: #182126; --ink: #e6edf0; --soft: #94a4ad; --rule: #2b373d;
  --calendar: #35b79b; --meter: #eda93c; --hover: #ffffff14;
  --s0: #212c31; --s1: #123f38; --s2: #15594d; --s3: #1a7a69; --s4: #249c85; --s5: #46c2a8; --s6: #98ebd6; } }
* { box-sizing: border-box; }
body { margin: 0; background: var(--page); color: var(--ink);
  font: 15px/1.5 system-ui, "Segoe UI", "Liberation Sans", Arial, sans-serif; }
main { max-width: 1080px; margin: 0 auto; padding: 28px 20px 40px; }
header p, .hint, footer { color: var(--soft); margin: 0; }
h1 { font-size: 1.7rem; line-height: 1.2; margin: 0 0 4px; letter-spacing: -0.01em; }
h2 { font-size: 1.05rem; margin: 0; }
section, details { background: var(--card); border: 1px solid var(--rule); border-radius: 12px; padding: 18px 20px;
  margin-top: 16px; }
.hint { font-size: 0.87rem; margin-bottom: 14px; }
.tiles { display: grid; grid-template-columns: repeat(auto-fit, minmax(150px, 1fr)); gap: 12px; margin: 20px 0 0; }
.tiles div { background: var(--card); border: 1px solid var(--rule); border-radius: 12px; padding: 12px 16px; }
.tiles dt { color: var(--soft); font-size: 0.83rem; }
.tiles dd { margin: 0; font-size: 1.5rem; font-weight: 650; line-height: 1.25; font-variant-numeric: tabular-nums; }
.tiles small { display: block; color: var(--soft); font-size: 0.8rem; font-weight: 400; line-height: 1.4; }
svg { display: block; width: 100%; height: 100%; }
.bars { display: grid; grid-template-columns: 2.6rem 1fr; }
.scale, .months { position: relative; color: var(--soft); font-size: 0.75rem; font-variant-numeric: tabular-nums; }
.scale span { position: absolute; right: 8px; transform: translateY(50%); line-height: 1; }
.plot { height: 240px; }
.months { grid-column: 2; height: 1.5rem; margin-top: 4px; }
.months span { position: absolute; white-space: nowrap; }
.line { stroke: var(--rule); stroke-width: 1; vector-effect: non-scaling-stroke; }
.column { fill: transparent; }
g:hover > .column { fill: var(--hover); }
.calendar { fill: var(--calendar); } .meter { fill: var(--meter); }
.s0 { fill: var(--s0); } .s1 { fill: var(--s1); } .s2 { fill: var(--s2); } .s3 { fill: var(--s3); }
.s4 { fill: var(--s4); } .s5 { fill: var(--s5); } .s6 { fill: var(--s6); }
.key { display: flex; flex-wrap: wrap; align-items: center; gap: 4px 14px; color: var(--soft); font-size: 0.83rem;
  margin: 10px 0 0; }
.swatch { width: 14px; height: 14px; border-radius: 3px; flex: none; }
.key span { display: inline-flex; align-items: center; gap: 6px; white-space: nowrap; }
.heat-row, .heat-axis { display: grid; grid-template-columns: 11.5rem 1fr 4.2rem; gap: 0 12px; align-items: center;
  margin-bottom: 6px; }
.heat-row { grid-template-areas: "name cells sum"; }
.heat-name { grid-area: name; overflow-wrap: anywhere; line-height: 1.25; }
.heat-cells { grid-area: cells; height: 24px; }
.heat-sum { grid-area: sum; text-align: right; font-variant-numeric: tabular-nums; color: var(--soft); }
.wide { overflow-x: auto; }
table { border-collapse: collapse; width: 100%; font-size: 0.87rem; font-variant-numeric: tabular-nums; }
th, td { text-align: right; padding: 5px 8px; border-bottom: 1px solid var(--rule); white-space: nowrap; }
th { color: var(--soft); font-weight: 600; }
.text, .name { text-align: left; } td.text { white-space: normal; }
tr:last-child td { border-bottom: 0; }
tr.total td { font-weight: 650; border-top: 2px solid var(--rule); }
summary { font-weight: 650; cursor: pointer; }
details[open] summary { margin-bottom: 10px; }
footer { font-size: 0.83rem; margin-top: 18px; }
@media (max-width: 620px) {
  main { padding: 18px 12px 28px; } section, details { padding: 14px; }
  h1 { font-size: 1.4rem; } .tiles { grid-template-columns: 1fr 1fr; gap: 8px; } .tiles dd { font-size: 1.25rem; }
  .plot { height: 180px; } .bars { grid-template-columns: 2.1rem 1fr; } .months { font-size: 0.65rem; }
  .heat-row { grid-template: "name sum" auto "cells cells" 20px / 1fr auto; gap: 2px 8px; margin-bottom: 8px; }
  .heat-axis { display: block; } .heat-cells { height: 20px; }
  th, td { padding: 4px; } table { font-size: 0.75rem; } .more { display: none; }
}
@media print { body { background: #fff; } section, details { break-inside: avoid; } }
)css";

}  // namespace host::forecast
