# OrvaneUI: `make run` starts the console, `make test` runs every test.
# Both install what is missing first.
BUILD ?= build
CMAKE_FLAGS ?=

.PHONY: deps configure build run test bench clean

deps:
	scripts/install-deps

configure: deps
	cmake -S . -B $(BUILD) -G Ninja -DORVANE_ONLY= $(CMAKE_FLAGS)

build: configure
	cmake --build $(BUILD)

run: build
	$(BUILD)/src/app/orvaneui

test: build
	cd $(BUILD) && ctest --output-on-failure -j2

bench: configure
	cmake --build $(BUILD) --target bench_all
	scripts/run-benchmarks $(BUILD)

clean:
	rm -rf $(BUILD)
