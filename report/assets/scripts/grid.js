"use strict";

/** What the scripts of the page share: its words, and tables as grids of cells. */
const page = {
  words: JSON.parse(document.getElementById("words").textContent),

  language: document.documentElement.lang || undefined,

  word(key) {
    return page.words[key] ?? key;
  },

  element(name, properties = {}, ...children) {
    const element = Object.assign(document.createElement(name), properties);
    element.append(...children);
    return element;
  },

  /** What a cell says, without its footnote marks. */
  text(cell) {
    if (!cell.querySelector("sup"))
      return cell.textContent;
    const copy = cell.cloneNode(true);
    copy.querySelectorAll("sup").forEach((marks) => marks.remove());
    return copy.textContent;
  },

  /** Prepares an element as soon as no fold hides it. Large pages would load slowly otherwise. */
  whenShown(element, prepare) {
    const fold = element.closest("details.fold:not([open])");
    if (fold)
      fold.addEventListener("toggle", () => page.whenShown(element, prepare), { once: true });
    else
      prepare(element);
  },

  /** The full value of a cell: a number with all its digits; a date as shown. */
  value(cell) {
    const { value, text, shown } = cell.dataset;
    if (value !== undefined && shown === undefined)
      return value;
    return text ?? page.text(cell);
  },

  /** The value of a cell as a spreadsheet in the page's language reads it. */
  copied(cell) {
    const value = page.value(cell);
    const isNumber = cell.tagName === "TD" && !cell.classList.contains("text")
      && value !== "" && !Number.isNaN(Number(value));
    return isNumber ? value.replace(".", page.decimalSign()) : value;
  },

  decimalSign() {
    const parts = new Intl.NumberFormat(page.language).formatToParts(1.5);
    return parts.some(({ type, value }) => type === "decimal" && value === ",") ? "," : ".";
  },

  /** Rows of values, in which a cell that spans others is repeated in each of their places. */
  grid(rows) {
    const grid = rows.map(() => []);
    rows.forEach((row, at) => {
      let column = 0;
      for (const cell of row.cells) {
        while (grid[at][column] !== undefined)
          ++column;
        const value = page.copied(cell);
        for (let down = 0; down < cell.rowSpan && at + down < grid.length; ++down)
          for (let right = 0; right < cell.colSpan; ++right)
            grid[at + down][column + right] = value;
      }
    });
    return grid;
  },
};

/** A table wider or higher than its place can be reached and scrolled by keyboard. */
function makeScrollable(grid) {
  const isCut = grid.scrollWidth > grid.clientWidth || grid.scrollHeight > grid.clientHeight;
  const caption = grid.querySelector("caption");
  if (isCut && !grid.hasAttribute("tabindex")) {
    grid.tabIndex = 0;
    grid.setAttribute("role", "region");
    grid.setAttribute("aria-label", caption ? caption.textContent.slice(0, 200) : "");
  }
}

document.documentElement.classList.add("scripted");
if (window.ResizeObserver) {
  const observer = new ResizeObserver((entries) => {
    entries.forEach((entry) => makeScrollable(entry.target));
  });
  document.querySelectorAll(".grid").forEach((grid) => observer.observe(grid));
}
