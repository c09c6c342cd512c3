"use strict";

/** Sorts the rows of a table by a column, each row staying in its group. */
{
  const collator = new Intl.Collator(page.language, { numeric: true });

  /** Numbers come before texts; what is empty comes last in either order. */
  const rankOf = (key) => (key === "" ? 2 : typeof key === "number" ? 0 : 1);

  const keyOf = (cell) => {
    const shown = cell.getAttribute("data-value") ?? page.value(cell);
    return shown === "" || cell.classList.contains("text") ? shown : Number(shown);
  };

  const compare = (left, right, sign) => {
    if (left.rank === 2 || right.rank === 2)
      return left.rank - right.rank;
    if (left.rank !== right.rank)
      return sign * (left.rank - right.rank);
    return sign * (left.rank === 0 ? left.key - right.key : collator.compare(left.key, right.key));
  };

  /** The rows between which only the innermost category differs, and what labels them together. */
  const groupsOf = (body) => {
    const groups = [];
    for (const row of body.rows) {
      if (groups.length === 0 || row.classList.contains("first"))
        groups.push({ rows: [], labels: [...row.cells].filter((cell) => cell.rowSpan > 1) });
      groups.at(-1).rows.push(row);
    }
    return groups;
  };

  const sorted = (group, column, columns, sign) => {
    if (sign === 0)
      return group.rows;
    const keyed = group.rows.map((row) => {
      const labels = row.cells.length - columns;
      const key = keyOf(row.cells[labels + column]);
      return { row, key, rank: rankOf(key), isTotal: row.classList.contains("total") };
    });
    return keyed.sort((left, right) =>
      left.isTotal - right.isTotal || compare(left, right, sign)).map(({ row }) => row);
  };

  /** Rows of a group keep their common labels in front of whichever comes first. The body is
      outside of the page meanwhile: inside, each row that moves would be laid out. */
  const arrange = (body, groups, column, columns, sign) => {
    const { parentNode: table, nextSibling: next } = body;
    body.remove();
    const rows = document.createDocumentFragment();
    for (const group of groups) {
      group.labels.forEach((label) => label.remove());
      const order = sorted(group, column, columns, sign);
      const isMarked = group.rows.some((row) => row.classList.contains("first"));
      order.forEach((row, at) => row.classList.toggle("first", isMarked && at === 0));
      order[0].prepend(...group.labels);
      order.forEach((row) => rows.append(row));
    }
    body.append(rows);
    table.insertBefore(body, next);
  };

  /** Arranges all rows of a table. `groups` are those of each body. */
  const arrangeAll = (table, groups, column, columns, sign) => {
    const parts = [...groups.values()].flatMap((inBody) =>
      inBody.map(({ rows, labels }, at) => ({ rows, labels, isFirst: at === 0 })));
    if (page.suitsBlocks(table, parts))
      page.layInBlocks(table, parts.map((part) =>
        ({ ...part, rows: sorted(part, column, columns, sign) })));
    else
      for (const [body, inBody] of groups)
        arrange(body, inBody, column, columns, sign);
  };

  const nextOrder = { none: "ascending", ascending: "descending", descending: "none" };
  const signs = { none: 0, ascending: 1, descending: -1 };

  /** One stop of the tab key for all columns; the arrow keys lead from one to the next. */
  const moveAmong = (buttons) => {
    const steps = { ArrowLeft: -1, ArrowRight: 1, Home: -Infinity, End: Infinity };
    const focusOn = (at) => {
      buttons.forEach((button, other) => { button.tabIndex = other === at ? 0 : -1; });
      buttons[at].focus();
    };
    buttons.forEach((button, at) => {
      button.tabIndex = at === 0 ? 0 : -1;
      button.addEventListener("keydown", (event) => {
        if (!(event.key in steps))
          return;
        event.preventDefault();
        focusOn(Math.min(Math.max(at + steps[event.key], 0), buttons.length - 1));
      });
    });
  };

  const makeSortable = (table) => {
    const headers = [...table.querySelectorAll("thead th[data-column]")];
    const columns = [...(table.tBodies[0]?.rows[0]?.cells ?? [])].filter(
      (cell) => cell.tagName === "TD").length;
    const groups = new Map([...table.tBodies].map((body) => [body, groupsOf(body)]));
    const isSortable = [...groups.values()].flat().some((group) => group.rows.length > 1);
    if (!isSortable)
      return;
    const buttons = [];
    for (const header of headers) {
      const button = page.element("button", { type: "button", className: "sort" });
      button.title = page.word("Sort");
      buttons.push(button);
      button.append(header.firstChild ?? "");
      header.prepend(button);
      header.setAttribute("aria-sort", "none");
      button.addEventListener("click", () => {
        const order = nextOrder[header.getAttribute("aria-sort")];
        // Before the header changes, because the columns of a long table are measured.
        arrangeAll(table, groups, Number(header.dataset.column), columns, signs[order]);
        headers.forEach((other) => other.setAttribute("aria-sort", "none"));
        header.setAttribute("aria-sort", order);
      });
    }
    moveAmong(buttons);
  };

  document.querySelectorAll("table.data").forEach((table) => page.whenShown(table, makeSortable));
}
