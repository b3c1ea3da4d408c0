# OrvaneUI: `make run` starts the console, `make test` runs every test.
# Both install what is missing first.
BUILD ?= build
# A second tree with AddressSanitizer and UndefinedBehaviorSanitizer, of
# which only the application is built: the monkey test and the benchmark's
# monkey soak drive it. A debug configuration keeps the assertions in; large
# batches make its cold build cheaper.
SANITIZED_BUILD ?= $(BUILD)-asan
SANITIZED_APP = $(abspath $(SANITIZED_BUILD))/src/app/orvaneui
CMAKE_FLAGS ?=

.PHONY: deps configure build sanitized run test bench clean

deps:
	scripts/install-deps

configure: deps
	cmake -S . -B $(BUILD) -G Ninja -DORVANE_ONLY= -DORVANE_MONKEY_APP=$(SANITIZED_APP) $(CMAKE_FLAGS)

build: configure
	cmake --build $(BUILD)

sanitized: deps
	cmake -S . -B $(SANITIZED_BUILD) -G Ninja -DORVANE_ONLY= -DORVANE_SANITIZE=ON \
	  -DCMAKE_BUILD_TYPE=Debug -DORVANE_UNITY_BATCH=32 $(CMAKE_FLAGS)
	cmake --build $(SANITIZED_BUILD) --target orvaneui

# Only the application and the libraries it links: no tests, no benchmarks.
run: configure
	cmake --build $(BUILD) --target orvaneui
	$(BUILD)/src/app/orvaneui

# The sanitized tree builds at the lowest priority beside the other tests,
# on the processor time they leave idle; the monkey drives it once both are
# done. Most tests wait on servers, windows and clocks more than they
# compute, so three run at once on two cores.
test: build
	@( nice -n 19 $(MAKE) --no-print-directory sanitized >$(BUILD)/sanitized-build.log 2>&1; \
	   echo $$? >$(BUILD)/sanitized-build.status ) & \
	cd $(BUILD) && ctest --output-on-failure -j3 -LE monkey; tests=$$?; \
	wait; \
	if [ "$$(cat sanitized-build.status)" != 0 ]; then \
	  tail -40 sanitized-build.log; echo "the sanitized build failed: $(BUILD)/sanitized-build.log"; exit 1; fi; \
	ctest --output-on-failure -L monkey; monkey=$$?; \
	[ $$tests = 0 ] && [ $$monkey = 0 ]

bench: configure sanitized
	cmake --build $(BUILD) --target bench_all monkey_preset_check
	scripts/run-benchmarks $(BUILD) $(SANITIZED_BUILD)

clean:
	rm -rf $(BUILD) $(SANITIZED_BUILD)
