"use strict";

/** Opens what a link leads to, and everything for paper. Finds entries of a long table of contents. */
{
  const leastEntries = 30;

  const open = (element) => {
    for (let fold = element?.closest("details"); fold; fold = fold.parentElement.closest("details"))
      fold.open = true;
  };

  const openTarget = () => {
    const target = document.getElementById(decodeURIComponent(location.hash.slice(1)));
    if (!target || target.closest("main") === null)
      return;
    open(target.closest("summary")?.parentElement ?? target.parentElement);
    target.scrollIntoView();
  };

  window.addEventListener("hashchange", openTarget);
  document.addEventListener("click", (event) => {
    const link = event.target.closest?.("nav a");
    if (link && link.hash === location.hash)
      openTarget();
  });
  openTarget();

  /** The data of charts and maps are not on paper. */
  const opened = new Set();
  const unfold = () => {
    for (const fold of document.querySelectorAll("main details:not([open], figure:not(.view) details)")) {
      fold.open = true;
      opened.add(fold);
    }
  };
  const refold = () => {
    opened.forEach((fold) => { fold.open = false; });
    opened.clear();
  };
  // Before the charts are drawn, which needs their size.
  window.addEventListener("beforeprint", unfold, { capture: true });
  window.addEventListener("afterprint", refold);
  window.matchMedia("print").addEventListener("change", ({ matches }) => matches ? unfold() : refold());

  /** Shows an entry if it or one below it has the words; returns whether it does. */
  const filter = (entry, words) => {
    const own = entry.firstElementChild.textContent.toLowerCase();
    const inner = [...entry.querySelectorAll(":scope > ol > li, :scope > details > ol > li")];
    const isFound = words.every((word) => own.includes(word));
    const isAround = inner.map((other) => filter(other, isFound ? [] : words)).includes(true);
    entry.hidden = !isFound && !isAround;
    const fold = entry.querySelector(":scope > details");
    if (fold)
      fold.open = words.length > 0 && !isFound && isAround;
    return !entry.hidden;
  };

  const outline = document.querySelector("nav");
  if (outline && outline.querySelectorAll("a").length >= leastEntries) {
    const field = page.element("input", { type: "search" });
    const none = page.element("p", { className: "none" });
    none.setAttribute("role", "status");
    const entries = [...outline.querySelectorAll(":scope > ol > li")];
    field.addEventListener("input", () => {
      const words = field.value.toLowerCase().split(/\s+/).filter((word) => word !== "");
      const isFound = entries.map((entry) => filter(entry, words)).includes(true);
      none.textContent = isFound ? "" : page.word("No entry has these words.");
    });
    outline.querySelector("p").after(page.element("label", { className: "find" },
      page.element("span", { className: "unseen", textContent: page.word("Find in the contents") }),
      field), none);
    field.placeholder = page.word("Find in the contents");
  }
}
