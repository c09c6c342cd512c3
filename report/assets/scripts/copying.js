"use strict";

/** Copies tables so that a spreadsheet gets every digit, and a label in each place it is about. */
{
  let prepared = null;

  const quoted = (value) =>
    /[\t\n\r"]/.test(value) ? `"${value.replaceAll('"', '""')}"` : value;

  /** A text that a spreadsheet would compute gets an apostrophe, which keeps it a text. */
  const inert = (value) =>
    /^[=+@\t\r-]/.test(value) && Number.isNaN(Number(value)) ? `'${value}` : value;

  /** Rows of a table as they go to the clipboard, as text and as markup. */
  const copyOf = (cells) => {
    const rows = cells.map((row) => row.map(inert));
    const table = page.element("table");
    for (const row of rows)
      table.append(page.element("tr", {},
        ...row.map((value) => page.element("td", { textContent: value }))));
    return {
      text: rows.map((row) => row.map(quoted).join("\t")).join("\n") + "\n",
      html: table.outerHTML,
    };
  };

  /** Whether some of a node is selected; a selection that ends where it begins has none of it. */
  const touches = (ranges, node) => {
    const content = document.createRange();
    content.selectNodeContents(node);
    return ranges.some((range) => range.compareBoundaryPoints(Range.START_TO_END, content) > 0
      && range.compareBoundaryPoints(Range.END_TO_START, content) < 0);
  };

  /** A table, or the rows of it that are selected; of a single row the cells that are. */
  const tableCopy = (table, ranges) => {
    const head = table.tHead ? [...table.tHead.rows] : [];
    const body = [...table.tBodies].flatMap((part) => [...part.rows]);
    const whole = page.grid(body);
    const isTouched = (row) => [...row.cells].some((cell) => touches(ranges, cell));
    const places = body.map((_, at) => at).filter((at) => !ranges || isTouched(body[at]));
    const chosen = places.map((at) => whole[at]);
    if (!ranges || places.length !== 1)
      return copyOf([...page.grid(head), ...chosen]);
    const cells = [...body[places[0]].cells].filter((cell) => cell.tagName === "TD");
    const labels = chosen[0].length - cells.length;
    const isChosen = (_, column) => column < labels || touches(ranges, cells[column - labels]);
    return copyOf([...page.grid(head), ...chosen].map((row) => row.filter(isChosen)));
  };

  const rangesOf = (selection) =>
    Array.from({ length: selection.rangeCount }, (_, at) => selection.getRangeAt(at));

  /** The part of a block that is selected. */
  const selectedText = (block, ranges) => {
    const range = document.createRange();
    range.selectNodeContents(block);
    const [first] = ranges.filter((candidate) => candidate.intersectsNode(block));
    if (range.compareBoundaryPoints(Range.START_TO_START, first) < 0)
      range.setStart(first.startContainer, first.startOffset);
    if (range.compareBoundaryPoints(Range.END_TO_END, first) > 0)
      range.setEnd(first.endContainer, first.endOffset);
    return range.toString();
  };

  /** Tables between texts: each block in its turn. */
  const mixedCopy = (ranges) => {
    const blocks = "h1, h2, h3, h4, h5, h6, p, li, figcaption, summary, pre, table.data";
    const copies = [...document.querySelectorAll(blocks)]
      .filter((block) => touches(ranges, block) && !block.closest("nav"))
      .filter((block) => block.checkVisibility?.() !== false)
      .map((block) => {
        if (block.tagName === "TABLE")
          return tableCopy(block, ranges);
        const text = selectedText(block, ranges);
        return { text: `${text}\n`, html: page.element("p", { textContent: text }).outerHTML };
      });
    return {
      text: copies.map((copy) => copy.text).join("\n"),
      html: copies.map((copy) => copy.html).join(""),
    };
  };

  /** What a selection copies; null where the browser does well by itself. */
  const selectionCopy = (selection) => {
    const ranges = rangesOf(selection);
    if (selection.isCollapsed || ranges.length === 0)
      return null;
    const outer = ranges[0].commonAncestorContainer;
    const within = outer.nodeType === Node.ELEMENT_NODE ? outer : outer.parentElement;
    if (within.closest("td, th, caption, textarea, svg"))
      return null;
    const table = within.closest("table.data");
    if (table)
      return tableCopy(table, ranges);
    const isTouched = [...document.querySelectorAll("table.data")].some((candidate) =>
      touches(ranges, candidate));
    return isTouched ? mixedCopy(ranges) : null;
  };

  document.addEventListener("copy", (event) => {
    const copy = prepared ?? selectionCopy(document.getSelection());
    if (!copy)
      return;
    event.clipboardData.setData("text/plain", copy.text);
    event.clipboardData.setData("text/html", copy.html);
    event.preventDefault();
  });

  const copyNow = (button, table) => {
    prepared = tableCopy(table, null);
    const isDone = document.execCommand("copy");
    prepared = null;
    if (!isDone)
      return;
    button.textContent = page.word("Copied");
    setTimeout(() => { button.textContent = page.word("Copy"); }, 1500);
  };

  const addButton = (figure) => {
    const button = page.element("button", {
      type: "button", className: "copy", textContent: page.word("Copy"),
    });
    button.setAttribute("aria-live", "polite");
    button.addEventListener("click", () =>
      copyNow(button, figure.querySelector(":scope > .grid:not([hidden]) table")));
    [...figure.querySelectorAll(":scope > .grid")].at(-1)?.after(button);
  };

  document.querySelectorAll("figure.table").forEach((figure) => page.whenShown(figure, addButton));
}
