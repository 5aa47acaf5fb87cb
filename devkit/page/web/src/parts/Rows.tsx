import type { ComponentChildren } from "preact";
import { useEffect, useRef, useState } from "preact/hooks";

interface Props<Row> {
  label: string;
  heads: readonly string[];
  rows: readonly Row[];
  keyOf(row: Row): string;
  /// The row's cells.
  render(row: Row): ComponentChildren;
  /// Said where there are no rows.
  none: string;
}

const rowHeight = 52;
const headHeight = 34;
const shownAtMost = 8;
/// Rendered above and below what is in view.
const spare = 8;

/// A table that renders the rows in view only, so that twenty thousand scroll like twenty.
export function Rows<Row>({ label, heads, rows, keyOf, render, none }: Props<Row>) {
  const [first, setFirst] = useState(0);
  const box = useRef<HTMLDivElement>(null);
  const start = Math.max(Math.min(first, rows.length - shownAtMost) - spare, 0);
  const end = Math.min(start + shownAtMost + 2 * spare, rows.length);

  // A list that became shorter is not left scrolled beyond its end.
  useEffect(() => {
    const top = box.current?.scrollTop ?? 0;
    setFirst(Math.floor(top / rowHeight));
  }, [rows.length]);

  return (
    <div
      class="scroll"
      ref={box}
      tabIndex={0}
      role="group"
      aria-label={label}
      style={{ height: `${headHeight + Math.min(Math.max(rows.length, 2), shownAtMost) * rowHeight}px` }}
      onScroll={(event) => setFirst(Math.floor(event.currentTarget.scrollTop / rowHeight))}
    >
      <table class="table" aria-label={label} aria-rowcount={rows.length + 1}>
        <thead>
          <tr aria-rowindex={1}>
            {heads.map((head) => (
              <th key={head} scope="col">
                {head}
              </th>
            ))}
          </tr>
        </thead>
        <tbody>
          {start > 0 && <Gap rows={start} columns={heads.length} />}
          {rows.slice(start, end).map((row, i) => (
            <tr key={keyOf(row)} aria-rowindex={start + i + 2} style={{ height: `${rowHeight}px` }}>
              {render(row)}
            </tr>
          ))}
          {end < rows.length && <Gap rows={rows.length - end} columns={heads.length} />}
          {rows.length === 0 && (
            <tr>
              <td class="faint none" colSpan={heads.length}>
                {none}
              </td>
            </tr>
          )}
        </tbody>
      </table>
    </div>
  );
}

function Gap({ rows, columns }: { rows: number; columns: number }) {
  return (
    <tr aria-hidden="true" style={{ height: `${rows * rowHeight}px` }}>
      <td colSpan={columns} />
    </tr>
  );
}
