"use strict";

/** Shows one layer of a table at a time; on paper all are shown. */
{
  const shortened = (text) => (text.length > 120 ? `${text.slice(0, 120)}…` : text);

  const select = (dimension) => {
    const list = page.element("select");
    dimension.categories.forEach((category, at) => {
      list.append(page.element("option", {
        value: String(at), textContent: shortened(category) || String(at + 1), dir: "auto",
      }));
    });
    return list;
  };

  const showLayer = (figure, lists) => {
    const layer = lists.map((list) => list.value).join(" ");
    figure.querySelectorAll(":scope > .grid").forEach((grid) => {
      grid.hidden = grid.dataset.layer !== layer;
    });
  };

  const addLists = (figure) => {
    const bar = page.element("div", { className: "tools" });
    const lists = JSON.parse(figure.dataset.layers).map((dimension) => {
      const list = select(dimension);
      const name = page.element("bdi", { textContent: shortened(dimension.name) });
      name.classList.toggle("unseen", dimension.hidesName);
      bar.append(page.element("label", {}, name, " ", list));
      list.addEventListener("change", () => showLayer(figure, lists));
      return list;
    });
    figure.prepend(bar);
    showLayer(figure, lists);
  };

  document.querySelectorAll("figure[data-layers]").forEach((figure) =>
    page.whenShown(figure, addLists));
}
