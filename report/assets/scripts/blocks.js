"use strict";

/** Long tables in blocks of rows: the browser lays out only those in sight. To lay out all rows of a
    table that was sorted would take seconds. */
{
  const leastRows = 1000;
  const rowsOfBlock = 100;

  const blockCount = (rowCount) => Math.ceil(rowCount / rowsOfBlock);

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
  const fix = (table, rowCount) => {
    const places = placesOf(table.tHead);
    const widths = [...table.tBodies[0].rows[0].cells].map((cell) => cell.getBoundingClientRect().width);
    for (const [cell, { column }] of places)
      if (cell.dataset.column !== undefined)
        widths[column] = Math.max(widths[column], headerWidth(cell));
    const heights = [...table.tBodies].map((body) => body.getBoundingClientRect().height);
    const height = heights.reduce((sum, one) => sum + one, 0);
    table.style.setProperty("--columns", widths.map((width) => `${width}px`).join(" "));
    table.style.setProperty("--block", `${height / blockCount(rowCount)}px`);
    for (const [cell, { row, column }] of places)
      cell.style.gridArea =
        `${row + 1} / ${column + 1} / span ${cell.rowSpan} / span ${cell.colSpan}`;
    table.classList.add("blocks");
  };

  /** Whether a table of so many rows is long, and no label of a row spans others. */
  page.suitsBlocks = (table, rowCount) =>
    rowCount >= leastRows && CSS.supports("content-visibility", "auto") && table.tHead !== null
      && !table.querySelector("tbody :is([rowspan], [colspan])");

  /** Puts these rows into the table, in their order and in blocks. They are all of its rows. */
  page.layInBlocks = (table, rows) => {
    if (!table.classList.contains("blocks"))
      fix(table, rows.length);
    [...table.tBodies].forEach((body) => body.remove());
    const count = blockCount(rows.length);
    const begin = (block) => Math.floor(block * rows.length / count);
    for (let block = 0; block < count; ++block)
      table.append(page.element("tbody", {}, ...rows.slice(begin(block), begin(block + 1))));
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
