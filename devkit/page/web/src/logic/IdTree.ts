/// A branch of the ids, or an id itself: what stands between "\" and ":".
export interface Branch<Leaf> {
  /// The id up to here, with the sign behind it where there is more.
  readonly path: string;
  readonly label: string;
  readonly parent: Branch<Leaf> | undefined;
  readonly children: Branch<Leaf>[];
  leaf?: Leaf;
  /// Leaves below and here that the filter lets through.
  shown: number;
}

export interface TreeRow<Leaf> {
  readonly key: string;
  readonly branch: Branch<Leaf>;
  /// From 0; of a pinned branch from its own place.
  readonly depth: number;
  readonly pinned: boolean;
}

/// Ids as a tree, sorted, with a filter that is asked once for each id.
export class IdTree<Leaf> {
  readonly root: Branch<Leaf> = { path: "", label: "", parent: undefined, children: [], shown: 0 };
  private readonly branches = new Map<string, Branch<Leaf>>([["", this.root]]);
  private readonly passed = new Map<string, boolean>();

  find(path: string): Branch<Leaf> | undefined {
    return this.branches.get(path);
  }

  /// `passes`: the filter lets it through.
  add(id: string, leaf: Leaf, passes: boolean): Branch<Leaf> {
    const branch = this.branchOf(id);
    branch.leaf = leaf;
    this.setPasses(id, passes);
    return branch;
  }

  setPasses(id: string, passes: boolean): void {
    const before = this.passed.get(id) ?? false;
    this.passed.set(id, passes);
    if (before === passes) return;
    for (let branch = this.branches.get(id); branch; branch = branch.parent) branch.shown += passes ? 1 : -1;
  }

  /// The rows from top to bottom: pinned branches first, then the tree, without what the filter holds back.
  rows(isOpen: (path: string) => boolean, pinned: readonly string[]): TreeRow<Leaf>[] {
    const rows: TreeRow<Leaf>[] = [];
    const add = (branch: Branch<Leaf>, depth: number, isPinned: boolean): void => {
      if (branch.shown === 0) return;
      rows.push({ key: (isPinned ? "pinned " : "") + branch.path, branch, depth, pinned: isPinned });
      if (branch.children.length > 0 && isOpen(branch.path))
        for (const child of branch.children) add(child, depth + 1, isPinned);
    };
    for (const path of pinned) {
      const branch = this.find(path);
      if (branch) add(branch, 0, true);
    }
    for (const branch of this.root.children) add(branch, 0, false);
    return rows;
  }

  private branchOf(path: string): Branch<Leaf> {
    const known = this.branches.get(path);
    if (known) return known;
    const cut = Math.max(path.lastIndexOf("\\", path.length - 2), path.lastIndexOf(":", path.length - 2)) + 1;
    const parent = this.branchOf(path.slice(0, cut));
    const branch: Branch<Leaf> = { path, label: path.slice(cut), parent, children: [], shown: 0 };
    this.branches.set(path, branch);
    let [from, to] = [0, parent.children.length];
    while (from < to) {
      const middle = (from + to) >> 1;
      if (parent.children[middle]!.label < branch.label) from = middle + 1;
      else to = middle;
    }
    parent.children.splice(from, 0, branch);
    return branch;
  }
}
