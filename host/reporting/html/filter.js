// Shows the sections that all filters let through. Without it every section is shown.
(() => {
  "use strict";
  const form = document.getElementById("filters");
  const files = [...document.querySelectorAll("section.file")];
  const selects = [...form.querySelectorAll("select[data-filter]")];
  const name = document.getElementById("filter-name");
  const shown = document.getElementById("shown");
  const openAll = document.getElementById("open-all");

  // A file has one verdict and one layout, but any number of findings.
  const isMatch = (file, {value, dataset: {filter}}) => {
    const own = file.dataset[filter];
    return value === "" || own === value || (filter === "findings" && own.split(" ").includes(value));
  };

  const apply = () => {
    const part = name.value.toLowerCase();
    let count = 0;
    for (const file of files) {
      const isShown = selects.every((select) => isMatch(file, select)) &&
        file.querySelector("h2").textContent.toLowerCase().includes(part);
      file.hidden = !isShown;
      count += isShown ? 1 : 0;
    }
    shown.textContent = `${count} of ${files.length} files shown`;
  };

  const toggleAll = () => {
    const isOpening = openAll.getAttribute("aria-pressed") !== "true";
    openAll.setAttribute("aria-pressed", String(isOpening));
    openAll.textContent = isOpening ? "Close all" : "Open all";
    for (const file of files) {
      file.querySelector("details").open = isOpening;
    }
  };

  form.hidden = false;
  form.addEventListener("input", apply);
  form.addEventListener("submit", (event) => event.preventDefault());
  form.addEventListener("reset", () => setTimeout(apply));
  openAll.addEventListener("click", toggleAll);
  apply();
})();
