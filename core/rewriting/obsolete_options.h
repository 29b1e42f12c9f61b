#ifndef CORE_REWRITING_OBSOLETE_OPTIONS_H
#define CORE_REWRITING_OBSOLETE_OPTIONS_H

/* The options that are dropped from a command line: tables alone, each ended by a null entry. An
 * argument is dropped when it begins with an entry of the one table that takes its kind; each
 * says which. The compiler refuses an entry of another kind, which could never match. They are
 * here for C++17 alone, whose compiler indexes them. */

#if defined(__cplusplus) && __cplusplus >= 201703L
extern "C" {

// Entries begin with "-Xshare:". For every host: the settings of class data sharing that an agent
// does not go with.
inline constexpr const char *IGNORE_ARGS[] = {
    "-Xshare:on",
    "-Xshare:auto",
    nullptr,
};

// For a Java 9 or later host, the options that it no longer accepts.

// Entries begin with "-", but not with "-X".
inline constexpr const char *JVM_11_OBSOLETE_HOST_ARGS[] = {
    "-d32",  "-d64", "-server", "-version:", "-jre-restrict-search", "-no-jre-restrict-search",
    nullptr,
};

// Entries begin with "-X", but not with "-XX:".
inline constexpr const char *JVM_11_OBSOLETE_HOST_X_ARGS[] = {
    "-Xincgc",
    "-Xprof",
    nullptr,
};

// The names that follow "-XX:": VALUE has a value behind a "=", FLAG that or a "+" or "-" in front.
// clang-format off
#define OBSOLETE_XX_OPTIONS(VALUE, FLAG) \
    VALUE(AdaptiveSizePausePolicy) FLAG(AdjustConcurrency) VALUE(AutoGCSelectPauseMillis) \
    VALUE(BackEdgeThreshold) FLAG(C1PatchInvokeDynamic) FLAG(CheckEndorsedAndExtDirs) \
    VALUE(ClearFPUAtPark) FLAG(CMSCompactWhenClearAllSoftRefs) FLAG(CMSDumpAtPromotionFailure) \
    VALUE(CMSFullGCsBeforeCompaction) VALUE(CMSIncrementalDutyCycle) \
    VALUE(CMSIncrementalDutyCycleMin) FLAG(CMSIncrementalMode) VALUE(CMSIncrementalOffset) \
    FLAG(CMSIncrementalPacing) VALUE(CMSParPromoteBlocksToClaim) \
    FLAG(CMSPrintEdenSurvivorChunks) VALUE(CodeCacheMinimumFreeSpace) FLAG(CollectGen0First) \
    FLAG(ConvertSleepToYield) FLAG(ConvertYieldToSleep) FLAG(CreateMinidumpOnCrash) \
    VALUE(DefaultMaxRAMFraction) VALUE(DefaultThreadPriority) VALUE(DeferPollingPageLoopCount) \
    VALUE(DeferThrSuspendLoopCount) VALUE(EmitSync) FLAG(EnableInvokeDynamic) \
    FLAG(EnableResourceManagementTLABCache) FLAG(EnableSharedLookupCache) FLAG(EnableTracing) \
    FLAG(ExplicitGCInvokesConcurrentAndUnloadsClasses) FLAG(FastTLABRefill) \
    VALUE(FenceInstruction) FLAG(G1PrintHeapRegions) FLAG(G1PrintRegionLivenessInfo) \
    FLAG(G1SummarizeConcMark) FLAG(G1SummarizeRSetStats) FLAG(G1TraceConcRefinement) \
    VALUE(GCLogFileSize) VALUE(hashCode) FLAG(JNIDetachReleasesMonitors) \
    FLAG(LazyBootClassLoader) FLAG(LogCommercialFeatures) FLAG(LoopLimitCheck) \
    VALUE(MallocVerifyInterval) VALUE(MallocVerifyStart) FLAG(MustCallLoadClassInternal) \
    VALUE(NmethodSweepCheckInterval) VALUE(NmethodSweepFraction) VALUE(NumberOfGCLogFiles) \
    FLAG(ParallelGCRetainPLAB) FLAG(ParallelGCVerbose) VALUE(PreInflateSpin) \
    FLAG(PrintActiveCpus) FLAG(PrintAdaptiveSizePolicy) FLAG(PrintClassHistogramAfterFullGC) \
    FLAG(PrintClassHistogramBeforeFullGC) FLAG(PrintCMSInitiationStatistics) \
    VALUE(PrintCMSStatistics) FLAG(PrintCompressedOopsMode) FLAG(PrintContainerInfo) \
    FLAG(PrintDTraceDOF) VALUE(PrintFLSCensus) VALUE(PrintFLSStatistics) \
    FLAG(PrintGCApplicationConcurrentTime) FLAG(PrintGCApplicationStoppedTime) \
    FLAG(PrintGCCause) FLAG(PrintGCDateStamps) FLAG(PrintGCID) FLAG(PrintGCTaskTimeStamps) \
    FLAG(PrintGCTimeStamps) FLAG(PrintHeapAtGC) FLAG(PrintHeapAtGCExtended) \
    FLAG(PrintJNIGCStalls) FLAG(PrintOldPLAB) FLAG(PrintOopAddress) \
    FLAG(PrintParallelOldGCPhaseTimes) FLAG(PrintPLAB) FLAG(PrintPromotionFailure) \
    FLAG(PrintReferenceGC) FLAG(PrintSharedSpaces) FLAG(PrintStringDeduplicationStatistics) \
    FLAG(PrintTenuringDistribution) FLAG(PrintTLAB) FLAG(RangeLimitCheck) \
    VALUE(ReadPrefetchInstr) FLAG(ReflectionWrapResolutionErrors) VALUE(SafepointPollOffset) \
    VALUE(SafepointSpinBeforeYield) VALUE(SharedMiscCodeSize) VALUE(SharedMiscDataSize) \
    VALUE(SharedReadOnlySize) VALUE(SharedReadWriteSize) VALUE(StarvationMonitorInterval) \
    VALUE(SyncFlags) VALUE(SyncKnobs) VALUE(SyncVerbose) VALUE(ThreadSafetyMargin) \
    FLAG(TraceBiasedLocking) FLAG(TraceClassLoading) FLAG(TraceClassLoadingPreorder) \
    FLAG(TraceClassPaths) FLAG(TraceClassResolution) FLAG(TraceClassUnloading) \
    FLAG(TraceDynamicGCThreads) FLAG(TraceGCTaskThread) FLAG(TraceGen0Time) FLAG(TraceGen1Time) \
    FLAG(TraceLoaderConstraints) FLAG(TraceMetadataHumongousAllocation) \
    FLAG(TraceMonitorInflation) FLAG(TraceParallelOldGCTasks) VALUE(TraceRedefineClasses) \
    FLAG(TraceSafepointCleanupTime) FLAG(TraceSharedLookupCache) FLAG(UnrollLimitCheck) \
    FLAG(UnsyncloadClass) FLAG(Use486InstrsOnly) FLAG(UseAltSigs) FLAG(UseAutoGCSelectPolicy) \
    FLAG(UseBoundThreads) FLAG(UseCMSCollectionPassing) FLAG(UseCMSCompactAtFullCollection) \
    FLAG(UseCompilerSafepoints) FLAG(UseFastAccessorMethods) FLAG(UseFastEmptyMethods) \
    FLAG(UseGCLogFileRotation) FLAG(UseLockedTracing) FLAG(UseOldInlining) FLAG(UseParNewGC) \
    FLAG(UseVMInterruptibleIO) FLAG(VerboseVerification) FLAG(VerifySilently) \
    VALUE(WorkAroundNPTLTimedWaitHang)
// clang-format on

#define OBSOLETE_ENTRY(name) "-XX:" #name "=",
#define OBSOLETE_NAME(name) #name,
#define OBSOLETE_NOTHING(name)

// Entries begin with "-XX:", and neither "+" nor "-" follows: options with a value.
inline constexpr const char *JVM_11_OBSOLETE_HOST_XX_ARGS[] = {
    OBSOLETE_XX_OPTIONS(OBSOLETE_ENTRY, OBSOLETE_ENTRY) "-XX:ThreadPriorityPolicy=42", nullptr};

// Entries are names of flags, as they follow "-XX:+" or "-XX:-".
inline constexpr const char *JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS[] = {
    OBSOLETE_XX_OPTIONS(OBSOLETE_NOTHING, OBSOLETE_NAME) nullptr};

#undef OBSOLETE_XX_OPTIONS
#undef OBSOLETE_ENTRY
#undef OBSOLETE_NAME
#undef OBSOLETE_NOTHING
}
#endif

#endif
