# OrvaneUI: `make run` starts the console, `make test` runs every test.
# Both install what is missing first.
BUILD ?= build
# A second tree with AddressSanitizer and UndefinedBehaviorSanitizer, of
# which only the application is built: the benchmark's monkey soak drives
# it. A debug configuration keeps the assertions in.
SANITIZED_BUILD ?= $(BUILD)-asan
CMAKE_FLAGS ?=

.PHONY: deps configure build sanitized run test bench clean

deps:
	scripts/install-deps

configure: deps
	cmake -S . -B $(BUILD) -G Ninja -DORVANE_ONLY= $(CMAKE_FLAGS)

build: configure
	cmake --build $(BUILD)

sanitized: deps
	cmake -S . -B $(SANITIZED_BUILD) -G Ninja -DORVANE_ONLY= -DORVANE_SANITIZE=ON \
	  -DCMAKE_BUILD_TYPE=Debug $(CMAKE_FLAGS)
	cmake --build $(SANITIZED_BUILD) --target orvaneui

# Only the application and the libraries it links: no tests, no benchmarks.
run: configure
	cmake --build $(BUILD) --target orvaneui
	$(BUILD)/src/app/orvaneui

test: build
	cd $(BUILD) && ctest --output-on-failure -j2

bench: configure sanitized
	cmake --build $(BUILD) --target bench_all monkey_preset_check
	scripts/run-benchmarks $(BUILD) $(SANITIZED_BUILD)

clean:
	rm -rf $(BUILD) $(SANITIZED_BUILD)
