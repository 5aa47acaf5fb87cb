/// A value that is edited step by step, with the steps before and those undone. Immutable: each step gives a new one.
export class Edits<Value> {
  private constructor(
    readonly now: Value,
    private readonly past: readonly Value[],
    private readonly future: readonly Value[],
  ) {}

  static of<Value>(value: Value): Edits<Value> {
    return new Edits(value, [], []);
  }

  get canUndo(): boolean {
    return this.past.length > 0;
  }

  get canRedo(): boolean {
    return this.future.length > 0;
  }

  /// A step that changes nothing is none.
  to(value: Value): Edits<Value> {
    return value === this.now ? this : new Edits(value, [...this.past, this.now], []);
  }

  undo(): Edits<Value> {
    const last = this.past.at(-1);
    return last === undefined ? this : new Edits(last, this.past.slice(0, -1), [this.now, ...this.future]);
  }

  redo(): Edits<Value> {
    const [next, ...rest] = this.future;
    return next === undefined ? this : new Edits(next, [...this.past, this.now], rest);
  }
}
