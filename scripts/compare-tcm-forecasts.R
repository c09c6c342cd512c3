#!/usr/bin/env Rscript
# Forecasts of temporal causal models beside those of R: mean absolute scaled errors on the monthly
# and quarterly series that R ships, from a rolling origin. Everything is computed in one run, the
# models by jobs of hvhost.
#
#     scripts/compare-tcm-forecasts.R [HVHOST] [ORIGINS] [SET...]
#
# HVHOST is the program (build/release/bin/hvhost), ORIGINS the number of origins of each set (6).
# Needs R with the package forecast (Debian: r-cran-forecast). Prints a Markdown table.

suppressPackageStartupMessages(library(forecast))

arguments <- commandArgs(trailingOnly = TRUE)
hvhost <- normalizePath(if (length(arguments) > 0) arguments[1] else "build/release/bin/hvhost")
originCount <- if (length(arguments) > 1) as.integer(arguments[2]) else 6L

# Series that are forecast together. Those of one group are the model's candidates for predictors.
sets <- list(
  AirPassengers = cbind(passengers = AirPassengers),
  co2 = cbind(co2 = co2),
  nottem = cbind(temperature = nottem),
  UKDriverDeaths = cbind(drivers = UKDriverDeaths),
  USAccDeaths = cbind(deaths = USAccDeaths),
  lungDeaths = cbind(male = mdeaths, female = fdeaths),
  Seatbelts = Seatbelts[, c("DriversKilled", "front", "rear", "kms", "PetrolPrice", "VanKilled")],
  UKgas = cbind(gas = UKgas),
  JohnsonJohnson = cbind(earnings = JohnsonJohnson),
  austres = cbind(residents = austres),
  freeny = ts(as.matrix(freeny[, c("y", "price.index", "income.level", "market.potential")]),
              start = c(1962, 2), frequency = 4))
if (length(arguments) > 2) sets <- sets[arguments[-(1:2)]]

folder <- tempfile("compare-tcm-")
dir.create(folder)

# The first days of the months of a series, a few of them beyond its end.
datesOf <- function(series, count) {
  start <- start(series)
  step <- 12 / frequency(series)
  month <- start[1] * 12 + (start[2] - 1) * step + step * (seq_len(count) - 1)
  sprintf("%04d-%02d-01", as.integer(month %/% 12), as.integer(month %% 12 + 1))
}

writeSeries <- function(series, columns) {
  frame <- as.data.frame(lapply(seq_along(columns), function(i) sprintf("%.10f", series[, i])))
  names(frame) <- columns
  write.csv(cbind(day = datesOf(series, nrow(series)), frame), file.path(folder, "in.csv"),
            quote = FALSE, row.names = FALSE)
}

# The forecasts of a model of the series, a column each, by one job: training, then scoring.
forecastByModel <- function(series, horizon) {
  columns <- paste0("s", seq_len(ncol(series)))
  writeSeries(series, columns)
  output <- file.path(folder, "out.csv")
  unlink(c(output, file.path(folder, c("prep.zip", "model.tcm"))))
  quoted <- function(texts) paste0('"', texts, '"', collapse = ", ")
  url <- function(name) paste0("file://", folder, "/", name)
  container <- function(name) sprintf('[{"name": "C", "uri": "%s"}]', url(name))
  reading <- sprintf(paste0(
    'read({"filesystem": {"locations": [{"path": "%s", "parser": {"name": "csv", ',
    '"config": {"hasHeader": true}}}]}}) -> tsdp:tsdp({"dateTimeField": "day", ',
    '"dimFieldList": [""], "metricFieldList": [%s], "timeInterval": {"unit": "%s"}}, _, %s)'),
    url("in.csv"), quoted(columns), if (frequency(series) == 12) "month" else "quarter",
    container("prep.zip"))
  listed <- paste0('["', columns, '"]', collapse = ", ")
  job <- c(
    sprintf('%s -> tcm:train({"maxLag": %d}, %s, %s)', reading, frequency(series) + 1L,
            container("prep.zip"), container("model.tcm")),
    sprintf(paste0('%s -> tcm:score({"fieldSetting": {"fieldNameList": {"seriesIDList": [%s]}}, ',
                   '"forecast": {"forecastSpan": %d}, "fit": {"doFit": false}, ',
                   '"outputOriginalValue": true}, %s, _) -> rtsdp:rtsdp({"exportFutureFlag": true},',
                   ' %s, _) -> write({"type": "text/csv", "dataDestination": "%s"})'),
            reading, listed, horizon, container("model.tcm"), container("prep.zip"),
            url("out.csv")))
  jobFile <- file.path(folder, "job.hvl")
  writeLines(job, jobFile)
  log <- suppressWarnings(system2(hvhost, c("run", jobFile), stdout = TRUE, stderr = TRUE))
  if (!file.exists(output)) stop(paste(log, collapse = "\n"))
  scores <- read.csv(output, check.names = FALSE)
  scores <- scores[scores[["$FutureFlag"]] == 1, ]
  as.matrix(scores[, paste0(columns, "_predicted"), drop = FALSE])
}

# The vector autoregression of all series together, its order by Akaike's criterion.
forecastByVar <- function(series, horizon) {
  values <- if (ncol(series) == 1) series[, 1] else series
  # As many lags as the points determine, a season and one more at most.
  most <- min(frequency(series) + 1, floor((nrow(series) - 1) / (ncol(series) + 1) / 2))
  fit <- ar(values, aic = TRUE, order.max = most, method = "ols", demean = FALSE, intercept = TRUE)
  matrix(predict(fit, newdata = values, n.ahead = horizon, se.fit = FALSE), nrow = horizon)
}

each <- function(method) function(series, horizon)
  sapply(seq_len(ncol(series)), function(i) as.numeric(method(series[, i], horizon)$mean))

methods <- list(
  "causal model" = forecastByModel,
  "naive" = each(function(x, h) rwf(x, h = h)),
  "seasonal naive" = each(function(x, h) snaive(x, h = h)),
  "VAR" = forecastByVar,
  "ARIMA" = each(function(x, h) forecast(auto.arima(x), h = h)),
  "ETS" = each(function(x, h) forecast(ets(x), h = h)))

# Hyndman and Koehler (2006), "Another look at measures of forecast accuracy": absolute errors over
# the mean absolute error of the seasonal naive method in the training data.
scaledErrors <- function(actual, predicted, training) {
  lag <- frequency(training)
  sapply(seq_len(ncol(training)), function(i) {
    scale <- mean(abs(diff(as.numeric(training[, i]), lag = lag)))
    mean(abs(actual[, i] - predicted[, i])) / scale
  })
}

compare <- function(series) {
  series <- ts(as.matrix(series), start = start(series), frequency = frequency(series))
  horizon <- if (frequency(series) == 12) 12L else 8L
  if (nrow(series) < 60) horizon <- frequency(series)
  # The last origin has the last `horizon` points before it; the others lie a quarter of it apart.
  ends <- nrow(series) - horizon - (seq_len(originCount) - 1) * max(1, horizon %/% 4)
  errors <- lapply(ends, function(end) {
    training <- ts(as.matrix(series[seq_len(end), , drop = FALSE]), start = start(series),
                   frequency = frequency(series))
    actual <- as.matrix(series[end + seq_len(horizon), , drop = FALSE])
    sapply(methods, function(method)
      mean(scaledErrors(actual, method(training, horizon), training)))
  })
  list(errors = rowMeans(do.call(cbind, errors)), horizon = horizon)
}

cat("| data | series | horizon |", paste(names(methods), collapse = " | "), "|\n")
cat("|---|---|---|", strrep("---|", length(methods)), "\n", sep = "")
total <- NULL
for (name in names(sets)) {
  result <- compare(sets[[name]])
  total <- cbind(total, result$errors)
  cat(sprintf("| %s | %d | %d | %s |\n", name, NCOL(sets[[name]]), result$horizon,
              paste(sprintf("%.3f", result$errors), collapse = " | ")))
}
cat(sprintf("| mean | | | %s |\n", paste(sprintf("%.3f", rowMeans(total)), collapse = " | ")))
unlink(folder, recursive = TRUE)
