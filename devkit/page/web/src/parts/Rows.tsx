import type { ComponentChildren } from "preact";
import { useEffect, useLayoutEffect, useRef, useState } from "preact/hooks";

interface Props<Row> {
  label: string;
  heads: readonly string[];
  rows: readonly Row[];
  keyOf(row: Row): string | number;
  /// The row's cells.
  render(row: Row): ComponentChildren;
  /// Said where there are no rows.
  none: string;
  /// In pixels.
  rowHeight?: number;
  /// Rows in view at a time, at most.
  most?: number;
  /// Keeps the end in view, until somebody scrolls up.
  follow?: boolean;
  /// Scrolled into view and marked, whenever it becomes another one.
  marked?: Row | undefined;
}

const headHeight = 34;
/// Rendered above and below what is in view.
const spare = 8;

/// A table that renders the rows in view only, so that twenty thousand scroll like twenty.
export function Rows<Row>(props: Props<Row>) {
  const { label, heads, rows, keyOf, render, none, rowHeight = 52, most = 8, follow = false, marked } = props;
  const [first, setFirst] = useState(0);
  const box = useRef<HTMLDivElement>(null);
  const atEnd = useRef(true);
  const start = Math.max(Math.min(first, rows.length - most) - spare, 0);
  const end = Math.min(start + most + 2 * spare, rows.length);

  // A list that became shorter is not left scrolled beyond its end.
  useLayoutEffect(() => {
    const element = box.current!;
    if (follow && atEnd.current) element.scrollTop = element.scrollHeight;
    setFirst(Math.floor(element.scrollTop / rowHeight));
  }, [rows.length, rows.at(-1), follow]);

  useEffect(() => {
    const element = box.current!;
    const top = marked === undefined ? -1 : rows.indexOf(marked) * rowHeight;
    const height = element.clientHeight - headHeight;
    if (top >= 0 && (top < element.scrollTop || top + rowHeight > element.scrollTop + height))
      element.scrollTop = Math.max(top - height / 2, 0);
  }, [marked]);

  return (
    <div
      class="scroll"
      ref={box}
      tabIndex={0}
      role="group"
      aria-label={label}
      style={{ height: `${headHeight + Math.min(Math.max(rows.length, 2), most) * rowHeight}px` }}
      onScroll={({ currentTarget: { scrollTop, clientHeight, scrollHeight } }) => {
        atEnd.current = scrollTop + clientHeight >= scrollHeight - rowHeight;
        setFirst(Math.floor(scrollTop / rowHeight));
      }}
    >
      <table class="table" aria-label={label} aria-rowcount={rows.length + 1}>
        <thead>
          <tr aria-rowindex={1}>
            {heads.map((head) => <th key={head} scope="col">{head}</th>)}
          </tr>
        </thead>
        <tbody>
          {start > 0 && <Gap height={start * rowHeight} columns={heads.length} />}
          {rows.slice(start, end).map((row, i) => (
            <tr
              key={keyOf(row)}
              class={marked !== undefined && row === marked ? "marked" : undefined}
              aria-rowindex={start + i + 2}
              style={{ height: `${rowHeight}px` }}
            >
              {render(row)}
            </tr>
          ))}
          {end < rows.length && <Gap height={(rows.length - end) * rowHeight} columns={heads.length} />}
          {rows.length === 0 && <tr><td class="faint none" colSpan={heads.length}>{none}</td></tr>}
        </tbody>
      </table>
    </div>
  );
}

function Gap({ height, columns }: { height: number; columns: number }) {
  return (
    <tr aria-hidden="true" style={{ height: `${height}px` }}><td colSpan={columns} /></tr>
  );
}
