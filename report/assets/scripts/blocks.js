"use strict";

/** Long tables in blocks of rows: the browser lays out only those in sight. To lay out all rows of a
    table that was sorted would take seconds. */
{
  const leastRows = 1000;
  const rowsOfBlock = 100;

  /** For each table in blocks: the labels that all rows of a block have together. */
  const labelsOf = new WeakMap();

  /** The width of a header with room for the arrow that shows the order. */
  const headerWidth = (header) => {
    const style = getComputedStyle(header);
    return parseFloat(style.paddingInlineStart) + parseFloat(style.paddingInlineEnd)
      + 1.2 * parseFloat(style.fontSize) + header.querySelector(".sort").getBoundingClientRect().width;
  };

  /** The places of the cells of a head, which may span others. */
  const placesOf = (head) => {
    const taken = [...head.rows].map(() => []);
    const places = new Map();
    [...head.rows].forEach((row, at) => {
      let column = 0;
      for (const cell of row.cells) {
        while (taken[at][column])
          ++column;
        places.set(cell, { row: at, column });
        for (let down = 0; down < cell.rowSpan; ++down)
          for (let right = 0; right < cell.colSpan; ++right)
            taken[at + down][column + right] = true;
      }
    });
    return places;
  };

  /** Fixes the widths of the columns, because a block does not know those of the others. */
  const fix = (table) => {
    const places = placesOf(table.tHead);
    const widths = [...table.tBodies[0].rows[0].cells].map((cell) => cell.getBoundingClientRect().width);
    for (const [cell, { column }] of places)
      if (cell.dataset.column !== undefined)
        widths[column] = Math.max(widths[column], headerWidth(cell));
    const body = [...table.tBodies].reduce((one, other) =>
      other.rows.length > one.rows.length ? other : one);
    const height = body.getBoundingClientRect().height / body.rows.length;
    table.style.setProperty("--columns", widths.map((width) => `${width}px`).join(" "));
    table.style.setProperty("--row", `${height}px`);
    table.querySelectorAll("tbody [colspan]").forEach((cell) => {
      cell.style.gridColumn = `span ${cell.colSpan}`;
    });
    for (const [cell, { row, column }] of places)
      cell.style.gridArea =
        `${row + 1} / ${column + 1} / span ${cell.rowSpan} / span ${cell.colSpan}`;
    table.classList.add("blocks");
  };

  /** Whether a table is long, and its labels span the rows of one part. A part has rows, the labels
      that they have together, and whether it is the first one of a body. */
  page.suitsBlocks = (table, parts) => {
    const rowCount = parts.reduce((sum, { rows }) => sum + rows.length, 0);
    const all = parts.flatMap(({ labels }) => labels);
    return rowCount >= leastRows && CSS.supports("content-visibility", "auto")
      && table.tHead !== null && !all.some((label) => label.id)
      && parts.every(({ rows, labels }) => labels.every((label) => label.rowSpan === rows.length))
      && (labelsOf.has(table) || (
        all.length === table.querySelectorAll("tbody [rowspan]").length
          && [...table.tBodies[0].rows[0].cells].every((cell) => cell.colSpan === 1)));
  };

  /** The rows of a block behind the labels that they have together. */
  const blockOf = (rows, labels, isFirst) => {
    const block = page.element("tbody", { className: isFirst ? "" : "more" });
    block.style.setProperty("--rows", rows.length);
    const copies = labels.map((label) => {
      const copy = label.cloneNode(true);
      copy.rowSpan = rows.length;
      copy.style.gridRow = `span ${rows.length}`;
      return copy;
    });
    rows[0].prepend(...copies);
    block.append(...rows);
    return { block, copies };
  };

  /** Puts these parts into the table, in their order and in blocks. They are all of its rows. */
  page.layInBlocks = (table, parts) => {
    if (!table.classList.contains("blocks"))
      fix(table);
    [...table.tBodies].forEach((body) => body.remove());
    (labelsOf.get(table) ?? parts.flatMap(({ labels }) => labels)).forEach((label) => label.remove());
    const placed = [];
    for (const { rows, labels, isFirst } of parts)
      for (let at = 0; at < rows.length; at += rowsOfBlock) {
        const { block, copies } = blockOf(rows.slice(at, at + rowsOfBlock), labels,
          isFirst && at === 0);
        placed.push(...copies);
        table.append(block);
      }
    labelsOf.set(table, placed);
  };

  /** In a wider or narrower window the columns may need other widths. */
  let windowWidth = window.innerWidth;
  window.addEventListener("resize", () => {
    if (window.innerWidth === windowWidth)
      return;
    windowWidth = window.innerWidth;
    document.querySelectorAll("table.blocks").forEach((table) => table.classList.remove("blocks"));
  });
}
