"use strict";

/** Draws each chart when it comes near the window, and before printing all others. If that fails,
    the data are open below a note with the reason. */
{
  /** Nothing is fetched, and links lead nowhere but to other pages of the web. */
  const loaderWith = (errors) => {
    const refuse = (uri) => {
      errors.push(`${uri} is outside of this page`);
      return Promise.reject(new Error(errors.at(-1)));
    };
    const sanitize = (uri, options) => {
      const isImage = options?.context === "image";
      const isAllowed = (isImage ? /^data:image\//i : /^(https?:|mailto:|#)/i).test(uri);
      return isAllowed ? Promise.resolve({ href: uri, rel: "noopener noreferrer" }) : refuse(uri);
    };
    return { load: refuse, http: refuse, file: refuse, sanitize };
  };

  /** Lines and texts take the colour of the page's text, by day, by night and on paper. */
  const ink = "currentColor";
  const config = {
    background: null,
    font: "system-ui, sans-serif",
    view: {
      stroke: null, continuousWidth: 560, continuousHeight: 300, discreteWidth: { step: 28 },
    },
    axis: {
      domainColor: ink, domainOpacity: 0.45, tickColor: ink, tickOpacity: 0.45,
      gridColor: ink, gridOpacity: 0.12, labelColor: ink, titleColor: ink,
      labelSeparation: 8, labelLimit: 240, labelFontSize: 11, titleFontSize: 12, titleFontWeight: 500, titlePadding: 10,
    },
    legend: { labelColor: ink, titleColor: ink, titleFontWeight: 500 },
    header: { labelColor: ink, titleColor: ink, titleFontWeight: 500 },
    title: { color: ink, subtitleColor: ink, fontWeight: 600, anchor: "start" },
    text: { color: ink },
    rule: { color: ink },
    mark: { color: "#4a78a8" },
    range: {
      category: ["#4a78a8", "#d08a3e", "#5b9a6b", "#b85c6e", "#8a72b0", "#4f9ea6", "#a2894f",
        "#c07fb0", "#7d8891", "#8f6a52"],
    },
  };

  /** The records of a table of data. */
  const rowsOf = (table) => {
    const names = [...table.tHead.rows[0].cells].map((cell) => cell.textContent);
    const valueOf = (cell) => {
      if (cell.classList.contains("text"))
        return cell.textContent;
      const value = cell.dataset.value ?? cell.textContent;
      return value === "" ? null : Number(value);
    };
    const rows = [...table.tBodies].flatMap((body) => [...body.rows]);
    return rows.map((row) =>
      Object.fromEntries([...row.cells].map((cell, at) => [names[at], valueOf(cell)])));
  };

  /** Fits a single view to the place that it has, so that its letters keep their size. Views with a
      step for each category of x, and those side by side, have a width of their own. */
  const fit = (specification, room) => {
    const parts = ["facet", "repeat", "concat", "hconcat", "vconcat", "width", "autosize"];
    const layers = [specification, ...(specification.layer ?? [])];
    const isStepped = layers.some(({ encoding }) => ["nominal", "ordinal"].includes(
      encoding?.x?.type) || encoding?.row || encoding?.column || encoding?.facet);
    if (isStepped || !layers.some(({ encoding }) => encoding?.x)
        || parts.some((part) => part in specification))
      return;
    specification.width = Math.min(640, Math.max(200, room));
    specification.autosize = { type: "fit-x", contains: "padding" };
    if (room < 500)
      specification.config = { ...specification.config,
        axis: { labelLimit: 110, ...specification.config?.axis } };
  };

  const specificationOf = (figure) => {
    const read = (element) => JSON.parse(element.textContent);
    const place = figure.querySelector(":scope > .specification");
    const specification = read(place);
    if (place.hasAttribute("data-rows"))
      specification.data = { values: rowsOf(figure.querySelector(":scope > details table")) };
    const sources = [...figure.querySelectorAll(":scope > .source")].map((source) =>
      [source.dataset.name, read(source)]);
    const caption = figure.querySelector(":scope > figcaption > bdi")?.textContent;
    if ((specification.title?.text ?? specification.title) === caption)
      delete specification.title;
    delete specification.usermeta;
    delete specification.$schema;
    if (sources.length > 0)
      specification.datasets = { ...Object.fromEntries(sources), ...specification.datasets };
    return specification;
  };

  /** Collects what the library has to say. */
  const loggerWith = (errors) => {
    const logger = {
      level: () => logger,
      error: (...args) => { errors.push(args.join(" ")); return logger; },
      warn: () => logger,
      info: () => logger,
      debug: () => logger,
    };
    return logger;
  };

  const describe = (figure) => {
    const drawing = figure.querySelector("svg");
    const words = figure.querySelector(":scope > figcaption").textContent.replace(/\s+/g, " ");
    const title = document.createElementNS("http://www.w3.org/2000/svg", "title");
    title.textContent = words.trim();
    drawing.prepend(title);
    drawing.setAttribute("role", "img");
    drawing.setAttribute("aria-label", words.trim());
    drawing.removeAttribute("aria-roledescription");
  };

  /** Numbers and dates on axes are written as in the page's tables. */
  const numbers = () => ({
    decimal: page.decimalSign(), thousands: "\u202f", grouping: [3], currency: ["", ""],
  });
  const dates = () => {
    const names = (count, part, form) => Array.from({ length: count }, (_, at) => {
      // The first day of 2023 is a Sunday.
      const moment = part === "month" ? Date.UTC(2023, at) : Date.UTC(2023, 0, at + 1);
      return new Intl.DateTimeFormat(page.language, { [part]: form, timeZone: "UTC" }).format(moment);
    });
    return {
      dateTime: "%Y-%m-%d %H:%M:%S", date: "%Y-%m-%d", time: "%H:%M:%S", periods: ["AM", "PM"],
      days: names(7, "weekday", "long"), shortDays: names(7, "weekday", "short"),
      months: names(12, "month", "long"), shortMonths: names(12, "month", "short"),
    };
  };

  const draw = async (figure, place) => {
    const errors = [];
    const specification = specificationOf(figure);
    fit(specification, place.clientWidth);
    await chartLibrary.embed(place, specification, {
      mode: "vega-lite", renderer: "svg", actions: false, defaultStyle: false, hover: false,
      tooltip: { disableDefaultStyle: true, theme: "page" },
      formatLocale: numbers(), timeFormatLocale: dates(),
      ast: true, expr: chartLibrary.expressionInterpreter,
      loader: loaderWith(errors), logger: loggerWith(errors), config,
    });
    if (errors.length > 0)
      throw new Error(errors[0]);
    describe(figure);
  };

  /** Unpacks the library when the first chart needs it. The policy of the page knows its hash. */
  const unpack = async () => {
    const packed = document.getElementById("library");
    if (!packed)
      return;
    const bytes = Uint8Array.from(atob(packed.textContent), (letter) => letter.charCodeAt(0));
    const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("deflate"));
    const script = page.element("script", { textContent: await new Response(stream).text() });
    document.head.append(script);
  };
  let unpacked = null;

  const missing = "The library that draws charts is missing from the installation.";

  const parts = (figure) => ["drawing", "details"].map((name) =>
    figure.querySelector(`:scope > :is(.${name}, ${name})`));

  const drawOrTell = async (figure) => {
    const [place, data] = parts(figure);
    try {
      await (unpacked ??= unpack());
      if (typeof chartLibrary === "undefined")
        throw new Error(page.word(missing));
      await draw(figure, place);
      data.open = false;
    } catch (error) {
      const why = page.element("bdi", { textContent: String(error.message ?? error) });
      const note = page.element("p", { className: "message level2" },
        page.element("strong", { textContent: page.word("This chart cannot be drawn.") }),
        " ", why);
      note.setAttribute("role", "note");
      place.replaceWith(note);
      data.open = true;
    }
    place.classList.remove("waiting");
    figure.classList.add("drawn");
  };

  const waiting = new Set([...document.querySelectorAll("figure.chart > .specification")].map(
    (specification) => specification.parentElement));
  let undrawn = waiting.size;

  const endOne = () => {
    if (--undrawn <= 0)
      document.documentElement.classList.add("drawn");
  };

  const drawOnce = (figure) => {
    if (waiting.delete(figure))
      drawOrTell(figure).then(endOne);
  };

  /** Until it is drawn, a chart is printed as its data. */
  const drawAll = () => {
    for (const figure of [...waiting]) {
      parts(figure)[1].open = true;
      drawOnce(figure);
    }
  };

  for (const figure of waiting) {
    const [place, data] = parts(figure);
    place.hidden = false;
    place.classList.add("waiting");
    data.open = false;
  }
  window.addEventListener("beforeprint", drawAll);
  window.matchMedia("print").addEventListener("change", drawAll);
  if (window.IntersectionObserver) {
    const observer = new IntersectionObserver((entries) => {
      entries.filter((entry) => entry.isIntersecting).forEach(({ target }) => {
        observer.unobserve(target);
        drawOnce(target);
      });
    }, { rootMargin: "400px" });
    waiting.forEach((figure) => observer.observe(figure));
  } else {
    drawAll();
  }
  if (waiting.size === 0)
    endOne();
}
