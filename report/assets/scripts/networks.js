
"use strict";

/** Hides the weaker arrows of a network; on paper all of them are there. */
{
  const leastEdges = 10;

  const show = (parts, count) => {
    // The strongest come last in the drawing.
    parts.forEach((part, at) => part.classList.toggle("weak", at < parts.length - count));
  };

  document.querySelectorAll(".network").forEach((network) => {
    const edges = [...network.querySelectorAll(".edge")];
    const heads = [...network.querySelectorAll(".head")];
    if (edges.length < leastEdges)
      return;
    const range = page.element("input", {
      type: "range", min: "1", max: String(edges.length), value: String(edges.length),
    });
    const count = page.element("output", { textContent: range.value });
    range.addEventListener("input", () => {
      count.textContent = range.value;
      show(edges, Number(range.value));
      show(heads, Number(range.value));
    });
    network.prepend(page.element("label", { className: "tools" },
      page.word("Strongest arrows"), " ", range, " ", count));
  });
}
