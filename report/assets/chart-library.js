// What the page's script for charts takes from the library that draws them.
export { default as embed } from "vega-embed";
export { expressionInterpreter } from "vega-interpreter";
