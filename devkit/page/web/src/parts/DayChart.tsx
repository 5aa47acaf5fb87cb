import { dateOfJulianDay, type DayCount } from "../logic/DailyCounters";
import { fill, language, numbers, text } from "../text/Text";

const width = 720;
const height = 200;
/// Left of the bars, for the numbers.
const gutter = 46;
/// Labels below the chart, at most.
const marks = 6;

/// A bar for each day; the same numbers are in a table below.
export function DayChart({ title, days }: { title: string; days: readonly DayCount[] }) {
  const t = text.value.statistics;
  const dateText = (julianDate: number) =>
    dateOfJulianDay(julianDate).toLocaleDateString(language.value, { day: "numeric", month: "short" });
  const most = days.reduce((one, other) => (other.count > one.count ? other : one));
  const step = width / days.length;
  const bar = (count: number) => (most.count === 0 ? 0 : (count / most.count) * height);
  const every = Math.ceil(days.length / marks);
  const summary = `${title}. ${fill(t.most, numbers.value.format(most.count), dateText(most.julianDate))}`;
  return (
    <>
      <svg class="chart" viewBox={`${-gutter} -10 ${width + gutter} ${height + 36}`} role="img" aria-label={summary}>
        {[0.5, 1].map((part) => (
          <g key={part}>
            <line x1="0" x2={width} y1={height * (1 - part)} y2={height * (1 - part)} class="rule" />
            <text x="-8" y={height * (1 - part) + 4} class="number">
              {most.count > 0 && numbers.value.format(Math.round(most.count * part))}
            </text>
          </g>
        ))}
        {days.map(({ julianDate, count }, i) => (
          <g key={julianDate}>
            <rect
              x={i * step + step * 0.12}
              width={step * 0.76}
              y={height - bar(count)}
              height={bar(count)}
              rx={Math.min(3, step / 4)}
            >
              <title>{`${dateText(julianDate)}: ${numbers.value.format(count)}`}</title>
            </rect>
            {i % every === 0 && <text x={i * step + step * 0.12} y={height + 18}>{dateText(julianDate)}</text>}
          </g>
        ))}
        <line x1="0" x2={width} y1={height} y2={height} class="base" />
      </svg>
      <details>
        <summary>{t.table}</summary>
        <table class="table small" aria-label={title}>
          <thead>
            <tr>
              <th scope="col">{t.day}</th>
              <th scope="col">{title}</th>
            </tr>
          </thead>
          <tbody>
            {[...days].reverse().map(({ julianDate, count }) => (
              <tr key={julianDate}>
                <td>{dateText(julianDate)}</td>
                <td>{numbers.value.format(count)}</td>
              </tr>
            ))}
          </tbody>
        </table>
      </details>
    </>
  );
}
