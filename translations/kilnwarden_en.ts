<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>CPUUsageTracker</name>
    <message>
        <source>CPU 计数器无有效增量</source>
        <translation>CPU counters did not advance</translation>
    </message>
</context>
<context>
    <name>ClearHistoryDialog</name>
    <message>
        <source>清除本次会话的事件历史？</source>
        <translation>Clear this session&apos;s event history?</translation>
    </message>
    <message>
        <source>此操作不会影响系统数据或正在运行的进程。</source>
        <translation>System data and running processes are not affected.</translation>
    </message>
    <message>
        <source>清除</source>
        <translation>Clear</translation>
    </message>
</context>
<context>
    <name>CommandRedaction</name>
    <message>
        <source>未知任务</source>
        <translation>Unknown task</translation>
    </message>
</context>
<context>
    <name>ConfirmationDialog</name>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>DashboardCommandLine</name>
    <message>
        <source>用法：kilnwarden [--dashboard-size 宽 高] [--dashboard-page 页面]
      kilnwarden --help | --version
页面：overview, liveDiagnosis, hardwareMonitor, eventHistory, settings
没有显示器时，kilnwarden-report 在终端中打印同样的诊断。</source>
        <translation>usage: kilnwarden [--dashboard-size WIDTH HEIGHT] [--dashboard-page SECTION]
       kilnwarden --help | --version
SECTION: overview, liveDiagnosis, hardwareMonitor, eventHistory, settings
Without a display, kilnwarden-report prints the same diagnosis in a terminal.</translation>
    </message>
    <message>
        <source>kilnwarden: 未知选项“%1”</source>
        <translation>kilnwarden: unknown option &apos;%1&apos;</translation>
    </message>
</context>
<context>
    <name>DashboardIncidentTracker</name>
    <message>
        <source>结束 %1 子进程</source>
        <translation>End child process %1</translation>
    </message>
    <message>
        <source>结束 %1 构建</source>
        <translation>End %1 build</translation>
    </message>
    <message>
        <source>结束 %1 任务</source>
        <translation>End %1 task</translation>
    </message>
</context>
<context>
    <name>DashboardPageHeader</name>
    <message>
        <source>监控中</source>
        <translation>Monitoring</translation>
    </message>
    <message>
        <source>已暂停</source>
        <translation>Paused</translation>
    </message>
    <message>
        <source>暂停监控</source>
        <translation>Pause monitoring</translation>
    </message>
    <message>
        <source>恢复监控</source>
        <translation>Resume monitoring</translation>
    </message>
    <message>
        <source>数据仅在本机处理</source>
        <translation>Data stays on this computer</translation>
    </message>
</context>
<context>
    <name>DashboardSection</name>
    <message>
        <source>概览</source>
        <translation>Overview</translation>
    </message>
    <message>
        <source>实时诊断</source>
        <translation>Live diagnosis</translation>
    </message>
    <message>
        <source>硬件监控</source>
        <translation>Hardware</translation>
    </message>
    <message>
        <source>事件历史</source>
        <translation>Event history</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Settings</translation>
    </message>
</context>
<context>
    <name>DashboardSidebar</name>
    <message>
        <source>工作区</source>
        <translation>Workspace</translation>
    </message>
    <message>
        <source>打开 KilnWarden 状态面板</source>
        <translation>Open the KilnWarden status panel</translation>
    </message>
    <message>
        <source>已选择</source>
        <translation>Selected</translation>
    </message>
    <message>
        <source>未选择</source>
        <translation>Not selected</translation>
    </message>
</context>
<context>
    <name>DashboardStatusLine</name>
    <message>
        <source>等待首次采样</source>
        <translation>Waiting for the first sample</translation>
    </message>
    <message>
        <source>设备整体状态正常</source>
        <translation>System is running normally</translation>
    </message>
    <message>
        <source>%1 个进程需要关注</source>
        <translation>Processes needing attention: %1</translation>
    </message>
    <message>
        <source>最新采样：%1 · %2</source>
        <translation>Last sample: %1 · %2</translation>
    </message>
    <message>
        <source>最新采样：%1 · 定位当前用户进程，并解释可能影响温度的持续负载</source>
        <translation>Last sample: %1 · Finds your processes and explains sustained load that can raise the temperature</translation>
    </message>
    <message>
        <source>Linux hwmon 传感器</source>
        <translation>Linux hwmon sensors</translation>
    </message>
    <message>
        <source>来自 %1 · 采样间隔 2 秒 · 本机处理</source>
        <translation>From %1 · Every 2 seconds · Processed locally</translation>
    </message>
    <message>
        <source>共记录 %1 个事件 · 数据仅保存在本次会话</source>
        <translation>Events recorded: %1 · Kept for this session only</translation>
    </message>
    <message>
        <source>配置与诊断数据仅在本机处理</source>
        <translation>Settings and diagnostics stay on this computer</translation>
    </message>
</context>
<context>
    <name>DashboardStore</name>
    <message>
        <source>%1：正在确认强制结束结果…</source>
        <translation>%1: checking whether the force quit worked…</translation>
    </message>
    <message>
        <source>%1：已发送退出请求，正在确认…</source>
        <translation>%1: quit request sent, checking…</translation>
    </message>
    <message>
        <source>%1：强制结束后进程仍在运行。</source>
        <translation>%1: still running after a force quit.</translation>
    </message>
    <message>
        <source>%1：进程仍在运行，可尝试强制结束。</source>
        <translation>%1: still running. You can try a force quit.</translation>
    </message>
    <message>
        <source>%1：进程已强制结束。</source>
        <translation>%1: ended by force quit.</translation>
    </message>
    <message>
        <source>%1：进程已结束。</source>
        <translation>%1: ended.</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>DashboardTask</name>
    <message>
        <source>渲染进程</source>
        <translation>Renderer</translation>
    </message>
    <message>
        <source>图形处理进程</source>
        <translation>GPU process</translation>
    </message>
    <message>
        <source>应用辅助服务</source>
        <translation>Helper service</translation>
    </message>
    <message>
        <source>测试任务</source>
        <translation>Test task</translation>
    </message>
    <message>
        <source>构建任务</source>
        <translation>Build task</translation>
    </message>
    <message>
        <source>工作进程</source>
        <translation>Worker process</translation>
    </message>
    <message>
        <source>父进程</source>
        <translation>Parent process</translation>
    </message>
</context>
<context>
    <name>DashboardTexts</name>
    <message>
        <source>强制结束 %1（PID %2）？</source>
        <translation>Force quit %1 (PID %2)?</translation>
    </message>
    <message>
        <source>结束 %1（PID %2）？</source>
        <translation>End %1 (PID %2)?</translation>
    </message>
    <message>
        <source>强制结束</source>
        <translation>Force quit</translation>
    </message>
    <message>
        <source>结束进程</source>
        <translation>End process</translation>
    </message>
    <message>
        <source>进程没有响应正常结束请求。强制结束会立即中断进程，未保存的数据可能丢失，所属应用也可能自动重新启动它。</source>
        <translation>The process did not respond to the quit request. A force quit stops it at once: unsaved data may be lost, and its app may start it again.</translation>
    </message>
    <message>
        <source>会结束这个进程，并可能中断它的 %1 个直接子进程；所属应用也可能自动重新启动它。</source>
        <translation>Ends this process and may interrupt its direct child processes (%1). Its app may also start it again.</translation>
    </message>
    <message>
        <source>会结束这个进程；未保存的工作可能丢失，所属应用也可能自动重新启动它。</source>
        <translation>Ends this process. Unsaved work may be lost, and its app may start it again.</translation>
    </message>
    <message>
        <source>正在分析当前用户的应用负载。</source>
        <translation>Analyzing the load of your apps.</translation>
    </message>
    <message>
        <source>采集两个样本后会按持续负载排序。</source>
        <translation>Sources are ranked by sustained load after two samples.</translation>
    </message>
    <message>
        <source>暂未发现可展示的活动任务</source>
        <translation>No active tasks to show yet</translation>
    </message>
    <message>
        <source>请选择任务查看详情</source>
        <translation>Select a task to see its details</translation>
    </message>
</context>
<context>
    <name>DashboardTrends</name>
    <message>
        <source>本机传感器</source>
        <translation>Local sensors</translation>
    </message>
    <message>
        <source>正在建立数据源连接</source>
        <translation>Connecting to data sources</translation>
    </message>
    <message>
        <source>采集中</source>
        <translation>Collecting</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>Temperature</translation>
    </message>
    <message>
        <source>风扇</source>
        <translation>Fan</translation>
    </message>
    <message>
        <source>内存</source>
        <translation>Memory</translation>
    </message>
    <message>
        <source>磁盘</source>
        <translation>Disk</translation>
    </message>
    <message>
        <source>网络</source>
        <translation>Network</translation>
    </message>
    <message>
        <source>进程采样</source>
        <translation>Process sampling</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>Normal</translation>
    </message>
</context>
<context>
    <name>DashboardWidgets</name>
    <message>
        <source>不可…</source>
        <comment>the least of an elided pill: a few characters and the ellipsis</comment>
        <translation>Un…</translation>
    </message>
</context>
<context>
    <name>DiagnosisTexts</name>
    <message>
        <source>高</source>
        <translation>High</translation>
    </message>
    <message>
        <source>中</source>
        <translation>Medium</translation>
    </message>
    <message>
        <source>低</source>
        <translation>Low</translation>
    </message>
    <message>
        <source>需关注的负载来源</source>
        <translation>Sources needing attention</translation>
    </message>
    <message>
        <source>全部负载来源</source>
        <translation>All load sources</translation>
    </message>
    <message>
        <source>%1 个来源</source>
        <translation>Sources: %1</translation>
    </message>
    <message>
        <source>%1 个来源 · %2 个进程</source>
        <translation>Sources: %1 · Processes: %2</translation>
    </message>
    <message>
        <source>按持续负载平滑排序 · 当前选中来源始终保留</source>
        <translation>Sorted by sustained load · Selection stays</translation>
    </message>
    <message>
        <source>按来源归组 · 覆盖 %1 个当前用户进程</source>
        <translation>By source · %1 of your processes</translation>
    </message>
    <message>
        <source>主要进程 %1 · PID %2</source>
        <translation>Process %1 · PID %2</translation>
    </message>
    <message>
        <source>负载来源 %1，主要进程 %2，PID %3，主要进程 CPU %4%，来源合计 %5%</source>
        <translation>Load source %1, main process %2, PID %3, main process CPU %4%, source total %5%</translation>
    </message>
    <message>
        <source>正在采集进程负载</source>
        <translation>Collecting process load</translation>
    </message>
    <message>
        <source>没有匹配的负载来源</source>
        <translation>No matching load sources</translation>
    </message>
    <message>
        <source>暂未发现当前用户进程</source>
        <translation>No user processes found yet</translation>
    </message>
    <message>
        <source>切换到“全部来源”可以主动查找其他来源。</source>
        <translation>Switch to &quot;All sources&quot; to find other sources.</translation>
    </message>
    <message>
        <source>可按应用、进程、PID、安全命令或项目名称搜索。</source>
        <translation>Search by app, process, PID, redacted command or project name.</translation>
    </message>
    <message>
        <source>选择一个进程查看来源上下文和持续时间</source>
        <translation>Select a process to see its source and how long it has run</translation>
    </message>
    <message>
        <source>当前来源 %1 · 选中进程 %2 · PID %3 · 估算资源影响 %4</source>
        <translation>Source %1 · Selected process %2 · PID %3 · Estimated impact: %4</translation>
    </message>
    <message>
        <source>主要负载进程</source>
        <translation>Main process</translation>
    </message>
    <message>
        <source>关联根</source>
        <translation>Root</translation>
    </message>
    <message>
        <source>%1 · %2 · 项目 %3 · 磁盘 %4 · %5</source>
        <translation>%1 · %2 · Project %3 · Disk %4 · %5</translation>
    </message>
    <message>
        <source>%1 · %2 · 磁盘 %3 · %4</source>
        <translation>%1 · %2 · Disk %3 · %4</translation>
    </message>
    <message>
        <source>%1，主要负载进程，%2，PID %3，CPU %4%，内存 %5，磁盘 %6，估算资源影响 %7</source>
        <translation>%1, main process, %2, PID %3, CPU %4%, memory %5, disk %6, estimated impact %7</translation>
    </message>
    <message>
        <source>%1，%2，PID %3，CPU %4%，内存 %5，磁盘 %6，估算资源影响 %7</source>
        <translation>%1, %2, PID %3, CPU %4%, memory %5, disk %6, estimated impact %7</translation>
    </message>
    <message>
        <source>折叠子进程</source>
        <translation>Collapse child processes</translation>
    </message>
    <message>
        <source>展开子进程</source>
        <translation>Expand child processes</translation>
    </message>
    <message>
        <source>正在分析当前进程负载</source>
        <translation>Analyzing process load</translation>
    </message>
    <message>
        <source>%1 › %2</source>
        <translation>%1 › %2</translation>
    </message>
    <message>
        <source>采样完成后会显示具体进程、所属应用和关联进程</source>
        <translation>The process, its app and related processes appear after sampling</translation>
    </message>
    <message>
        <source>PID %1 · %2 · %3 个关联进程</source>
        <translation>PID %1 · %2 · Related processes: %3</translation>
    </message>
    <message>
        <source>负载来源 %1，选中进程 %2，PID %3</source>
        <translation>Load source %1, selected process %2, PID %3</translation>
    </message>
    <message>
        <source>等待进程采样</source>
        <translation>Waiting for process sampling</translation>
    </message>
    <message>
        <source>CPU %1% · 内存 %2 · 磁盘 %3 · 持续 %4</source>
        <translation>CPU %1% · Memory %2 · Disk %3 · Lasting %4</translation>
    </message>
    <message>
        <source>等待负载来源采样</source>
        <translation>Waiting for load source sampling</translation>
    </message>
    <message>
        <source>%1 合计 CPU %2% · %3 个关联进程</source>
        <translation>%1 total CPU %2% · Related processes: %3</translation>
    </message>
    <message>
        <source>正在读取温度与热状态</source>
        <translation>Reading temperature and thermal state</translation>
    </message>
    <message>
        <source>温度 %1 · 热状态 %2</source>
        <translation>Temperature %1 · Thermal state %2</translation>
    </message>
    <message>
        <source>温度 %1 · 热状态 %2 · 数据源 %3</source>
        <translation>Temperature %1 · Thermal state %2 · Data source %3</translation>
    </message>
    <message>
        <source>不可用</source>
        <translation>Unavailable</translation>
    </message>
    <message>
        <source>现在</source>
        <translation>Now</translation>
    </message>
    <message>
        <source>-%1m</source>
        <translation>-%1m</translation>
    </message>
    <message>
        <source>-%1s</source>
        <translation>-%1s</translation>
    </message>
</context>
<context>
    <name>DiagnosisTrendContent</name>
    <message>
        <source>CPU</source>
        <translation>CPU</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>Temperature</translation>
    </message>
    <message>
        <source>正在积累相关性趋势…</source>
        <translation>Building up the trend…</translation>
    </message>
</context>
<context>
    <name>DiagnosisWorkspace</name>
    <message>
        <source>诊断工作区</source>
        <translation>Diagnosis workspace</translation>
    </message>
    <message>
        <source>选中进程 CPU</source>
        <translation>Process CPU</translation>
    </message>
    <message>
        <source>进程组成</source>
        <translation>Process tree</translation>
    </message>
    <message>
        <source>选择来源内任意进程，查看证据、影响和可用操作</source>
        <translation>Select any process in the source to see evidence, impact and actions</translation>
    </message>
    <message>
        <source>证据</source>
        <translation>Evidence</translation>
    </message>
    <message>
        <source>进程</source>
        <translation>Process</translation>
    </message>
    <message>
        <source>来源</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>系统</source>
        <translation>System</translation>
    </message>
    <message>
        <source>整机 CPU 与温度</source>
        <translation>System CPU and temperature</translation>
    </message>
    <message>
        <source>最近 5 分钟</source>
        <translation>Last 5 min</translation>
    </message>
    <message>
        <source>系统 CPU</source>
        <translation>System CPU</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>Temperature</translation>
    </message>
    <message>
        <source>整机 CPU 与温度趋势，范围最近 5 分钟</source>
        <translation>System CPU and temperature trend, last 5 minutes</translation>
    </message>
    <message>
        <source>整机趋势用于验证操作前后的总体变化，不代表单个进程的历史曲线。</source>
        <translation>The system trend shows the overall change around an action, not one process&apos;s history.</translation>
    </message>
</context>
<context>
    <name>DiskIORate</name>
    <message>
        <source>未发现系统磁盘累计读写计数器</source>
        <translation>No disk read/write counters found</translation>
    </message>
    <message>
        <source>磁盘累计计数器无有效增量</source>
        <translation>Disk counters did not advance</translation>
    </message>
</context>
<context>
    <name>EventHistoryFilter</name>
    <message>
        <source>本次会话</source>
        <translation>This session</translation>
    </message>
    <message>
        <source>全部</source>
        <translation>All</translation>
    </message>
    <message>
        <source>高负载</source>
        <translation>High load</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>Temperature</translation>
    </message>
    <message>
        <source>已解决</source>
        <translation>Resolved</translation>
    </message>
</context>
<context>
    <name>EventHistoryToolbar</name>
    <message>
        <source>搜索事件或进程</source>
        <translation>Search events or processes</translation>
    </message>
    <message>
        <source>事件范围：%1</source>
        <translation>Range: %1</translation>
    </message>
    <message>
        <source>已选择</source>
        <translation>Selected</translation>
    </message>
</context>
<context>
    <name>EvidenceScopeRow</name>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>HardwareCategory</name>
    <message>
        <source>温度</source>
        <translation>Temperature</translation>
    </message>
    <message>
        <source>当前芯片温度</source>
        <translation>Current chip temperature</translation>
    </message>
    <message>
        <source>温度趋势 · 60 秒</source>
        <translation>Temperature · 60 s</translation>
    </message>
    <message>
        <source>当前 CPU 占用</source>
        <translation>Current CPU usage</translation>
    </message>
    <message>
        <source>CPU 使用率 · 60 秒</source>
        <translation>CPU usage · 60 s</translation>
    </message>
    <message>
        <source>当前 GPU 占用</source>
        <translation>Current GPU usage</translation>
    </message>
    <message>
        <source>GPU 使用率 · 60 秒</source>
        <translation>GPU usage · 60 s</translation>
    </message>
    <message>
        <source>内存</source>
        <translation>Memory</translation>
    </message>
    <message>
        <source>当前内存占用</source>
        <translation>Current memory usage</translation>
    </message>
    <message>
        <source>内存占用 · 60 秒</source>
        <translation>Memory usage · 60 s</translation>
    </message>
    <message>
        <source>磁盘</source>
        <translation>Disk</translation>
    </message>
    <message>
        <source>当前磁盘活动</source>
        <translation>Current disk activity</translation>
    </message>
    <message>
        <source>磁盘活动 · 60 秒</source>
        <translation>Disk activity · 60 s</translation>
    </message>
    <message>
        <source>风扇</source>
        <translation>Fans</translation>
    </message>
    <message>
        <source>当前风扇转速</source>
        <translation>Current fan speed</translation>
    </message>
    <message>
        <source>风扇转速 · 60 秒</source>
        <translation>Fan speed · 60 s</translation>
    </message>
</context>
<context>
    <name>HardwareCategoryTabs</name>
    <message>
        <source>已选择</source>
        <translation>Selected</translation>
    </message>
    <message>
        <source>未选择</source>
        <translation>Not selected</translation>
    </message>
</context>
<context>
    <name>HardwareChartContent</name>
    <message>
        <source>正在采集%1趋势…</source>
        <translation>%1 trend: collecting…</translation>
    </message>
</context>
<context>
    <name>HardwareSensorTable</name>
    <message>
        <source>传感器读数</source>
        <translation>Sensor readings</translation>
    </message>
    <message>
        <source>实时</source>
        <translation>Live</translation>
    </message>
    <message>
        <source>传感器</source>
        <translation>Sensor</translation>
    </message>
    <message>
        <source>位置</source>
        <translation>Location</translation>
    </message>
    <message>
        <source>当前读数</source>
        <translation>Reading</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>Status</translation>
    </message>
</context>
<context>
    <name>HardwareSummaryRow</name>
    <message>
        <source>60 秒峰值</source>
        <translation>60 s peak</translation>
    </message>
    <message>
        <source>60 秒平均</source>
        <translation>60 s average</translation>
    </message>
    <message>
        <source>数据来源</source>
        <translation>Source</translation>
    </message>
</context>
<context>
    <name>HardwareTexts</name>
    <message>
        <source>采集中</source>
        <translation>Collecting</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>偏热</source>
        <translation>Warm</translation>
    </message>
    <message>
        <source>较热</source>
        <translation>Hot</translation>
    </message>
    <message>
        <source>过热</source>
        <translation>Overheating</translation>
    </message>
    <message>
        <source>数据正常</source>
        <translation>Reading normally</translation>
    </message>
    <message>
        <source>正在采集</source>
        <translation>Collecting</translation>
    </message>
    <message>
        <source>当前不可用</source>
        <translation>Unavailable</translation>
    </message>
    <message>
        <source>不可用</source>
        <translation>Unavailable</translation>
    </message>
    <message>
        <source>热状态%1</source>
        <translation>Thermal state: %1</translation>
    </message>
    <message>
        <source>现在</source>
        <translation>Now</translation>
    </message>
    <message>
        <source>显卡</source>
        <translation>Graphics card</translation>
    </message>
    <message>
        <source>处理器</source>
        <translation>Processor</translation>
    </message>
    <message>
        <source>机身内部</source>
        <translation>Chassis</translation>
    </message>
    <message>
        <source>系统</source>
        <translation>System</translation>
    </message>
    <message>
        <source>存储</source>
        <translation>Storage</translation>
    </message>
    <message>
        <source>当前用户</source>
        <translation>Current user</translation>
    </message>
</context>
<context>
    <name>HwmonSensorProbe</name>
    <message>
        <source>Linux hwmon CPU 传感器</source>
        <translation>Linux hwmon CPU sensor</translation>
    </message>
    <message>
        <source>当前系统没有可用的 hwmon 温度传感器接口</source>
        <translation>This system has no hwmon temperature sensor interface</translation>
    </message>
    <message>
        <source>无权读取 hwmon 温度传感器</source>
        <translation>No permission to read the hwmon temperature sensors</translation>
    </message>
    <message>
        <source>未发现可识别的 CPU 温度通道</source>
        <translation>No recognizable CPU temperature channel found</translation>
    </message>
    <message>
        <source>Linux hwmon 风扇传感器</source>
        <translation>Linux hwmon fan sensor</translation>
    </message>
    <message>
        <source>系统没有可读取的风扇转速传感器</source>
        <translation>This system has no readable fan speed sensor</translation>
    </message>
    <message>
        <source>无权读取 hwmon 风扇传感器</source>
        <translation>No permission to read the hwmon fan sensors</translation>
    </message>
    <message>
        <source>hwmon 未返回明确的风扇 RPM</source>
        <translation>hwmon reported no clear fan RPM</translation>
    </message>
</context>
<context>
    <name>IncidentDetailPanel</name>
    <message>
        <source>选择一条事件查看详情</source>
        <translation>Select an event to see its details</translation>
    </message>
    <message>
        <source>详情只展示本次会话中真实采集到的负载、温度与处理结果。</source>
        <translation>Details show only the load, temperatures and outcomes actually recorded in this session.</translation>
    </message>
    <message>
        <source>目标进程</source>
        <translation>Process</translation>
    </message>
    <message>
        <source>所属应用</source>
        <translation>Application</translation>
    </message>
    <message>
        <source>CPU 峰值</source>
        <translation>Peak CPU</translation>
    </message>
    <message>
        <source>温度变化</source>
        <translation>Temperature change</translation>
    </message>
    <message>
        <source>磁盘活动</source>
        <translation>Disk activity</translation>
    </message>
    <message>
        <source>建议</source>
        <translation>Suggestion</translation>
    </message>
    <message>
        <source>查看实时诊断</source>
        <translation>Open live diagnosis</translation>
    </message>
    <message>
        <source>%1 开始 · 持续 %2</source>
        <translation>Started %1 · Duration %2</translation>
    </message>
    <message>
        <source>本次事件未记录</source>
        <translation>Not recorded for this event</translation>
    </message>
</context>
<context>
    <name>IncidentListModel</name>
    <message>
        <source>%1，%2，%3，%4，%5</source>
        <translation>%1, %2, %3, %4, %5</translation>
    </message>
</context>
<context>
    <name>IncidentListPanel</name>
    <message>
        <source>本次会话暂无匹配事件</source>
        <translation>No matching events in this session</translation>
    </message>
    <message>
        <source>真实热压力、持续负载或结束任务后，事件会出现在这里。</source>
        <translation>Events appear here after real thermal pressure, sustained load or an ended task.</translation>
    </message>
    <message>
        <source>事件记录</source>
        <translation>Events</translation>
    </message>
    <message>
        <source>按时间倒序</source>
        <translation>Newest first</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>事件</source>
        <translation>Event</translation>
    </message>
    <message>
        <source>进程</source>
        <translation>Process</translation>
    </message>
    <message>
        <source>峰值</source>
        <translation>Peak</translation>
    </message>
    <message>
        <source>结果</source>
        <translation>Result</translation>
    </message>
</context>
<context>
    <name>IncidentTexts</name>
    <message>
        <source>进行中</source>
        <translation>Ongoing</translation>
    </message>
    <message>
        <source>高负载开始</source>
        <translation>High load started</translation>
    </message>
    <message>
        <source>已改善</source>
        <translation>Improved</translation>
    </message>
    <message>
        <source>负载恢复</source>
        <translation>Load recovered</translation>
    </message>
    <message>
        <source>已恢复</source>
        <translation>Recovered</translation>
    </message>
    <message>
        <source>未改善</source>
        <translation>Not improved</translation>
    </message>
    <message>
        <source>仍需关注</source>
        <translation>Needs attention</translation>
    </message>
    <message>
        <source>数据不足</source>
        <translation>Not enough data</translation>
    </message>
    <message>
        <source>操作失败</source>
        <translation>Action failed</translation>
    </message>
    <message>
        <source>温度持续升高</source>
        <translation>Temperature kept rising</translation>
    </message>
    <message>
        <source>持续高负载</source>
        <translation>Sustained high load</translation>
    </message>
    <message>
        <source>检测到热压力</source>
        <translation>Thermal pressure detected</translation>
    </message>
    <message>
        <source>%1 · %2°</source>
        <translation>%1 · %2°</translation>
    </message>
    <message>
        <source>%1 秒</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 分钟</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>未读取</source>
        <translation>Not read</translation>
    </message>
    <message>
        <source>%1 → %2</source>
        <translation>%1 → %2</translation>
    </message>
</context>
<context>
    <name>KeyedRowModel</name>
    <message>
        <source>已选择</source>
        <translation>Selected</translation>
    </message>
    <message>
        <source>未选择</source>
        <translation>Not selected</translation>
    </message>
</context>
<context>
    <name>KilnWardenMain</name>
    <message>
        <source>kilnwarden: 没有可用的显示（DISPLAY 或 WAYLAND_DISPLAY）；kilnwarden-report 可在终端中显示同样的诊断</source>
        <translation>kilnwarden: no usable display (DISPLAY or WAYLAND_DISPLAY); kilnwarden-report shows the same diagnosis in a terminal</translation>
    </message>
    <message>
        <source>kilnwarden: %1 属于其他用户或对他人开放；不启动（请将 XDG_RUNTIME_DIR 设为你自己的运行时目录）</source>
        <translation>kilnwarden: %1 belongs to another user or is open to others; not starting (set XDG_RUNTIME_DIR to your own runtime directory)</translation>
    </message>
    <message>
        <source>kilnwarden: 未安装可显示中文的字体；请安装 fonts-noto-cjk</source>
        <translation>kilnwarden: no font for Chinese text is installed; install fonts-noto-cjk</translation>
    </message>
</context>
<context>
    <name>KilnWardenMenuBarItem</name>
    <message>
        <source>打开仪表盘</source>
        <translation>Open dashboard</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Quit</translation>
    </message>
</context>
<context>
    <name>KilnWardenMenuBarPanel</name>
    <message>
        <source>另有 %1 个需关注任务</source>
        <translation>+%1 more needing attention</translation>
    </message>
    <message>
        <source>主要负载</source>
        <translation>Top load</translation>
    </message>
    <message>
        <source>打开仪表盘</source>
        <translation>Open dashboard</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Quit</translation>
    </message>
    <message>
        <source>运行 %1</source>
        <translation>Running %1</translation>
    </message>
</context>
<context>
    <name>LinuxGPUUsageProbe</name>
    <message>
        <source>未发现可读取的 GPU 利用率通道</source>
        <translation>No readable GPU usage channel found</translation>
    </message>
</context>
<context>
    <name>LiveDiagnosisPage</name>
    <message>
        <source>筛选进程或应用</source>
        <translation>Filter processes or apps</translation>
    </message>
    <message>
        <source>来源</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>主要进程 CPU</source>
        <translation>Process</translation>
    </message>
    <message>
        <source>合计</source>
        <translation>Total</translation>
    </message>
    <message>
        <source>当前详情未包含在筛选结果中</source>
        <translation>The selected source is hidden by the filter</translation>
    </message>
    <message>
        <source>清除筛选</source>
        <translation>Clear filter</translation>
    </message>
    <message>
        <source>来源范围</source>
        <translation>Sources shown</translation>
    </message>
    <message>
        <source>已选择</source>
        <translation>Selected</translation>
    </message>
    <message>
        <source>未选择</source>
        <translation>Not selected</translation>
    </message>
</context>
<context>
    <name>LoadTextFormats</name>
    <message>
        <source>%1 小时 %2 分钟</source>
        <translation>%1 h %2 min</translation>
    </message>
    <message>
        <source>%1 分钟</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1 秒</source>
        <translation>%1 s</translation>
    </message>
</context>
<context>
    <name>MenuBarPresentation</name>
    <message>
        <source>正在采集系统状态</source>
        <translation>Collecting system status</translation>
    </message>
    <message>
        <source>观察中</source>
        <translation>Observing</translation>
    </message>
    <message>
        <source>正在观察系统状态</source>
        <translation>Watching the system</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>系统状态正常</source>
        <translation>System normal</translation>
    </message>
    <message>
        <source>当前未发现需要处理的持续高负载</source>
        <translation>No sustained high load needs action</translation>
    </message>
    <message>
        <source>正常 · %1</source>
        <translation>Normal · %1</translation>
    </message>
    <message>
        <source>负载高</source>
        <translation>High load</translation>
    </message>
    <message>
        <source>建议处理</source>
        <translation>Needs action</translation>
    </message>
    <message>
        <source>已持续 %1</source>
        <translation>Lasting %1</translation>
    </message>
    <message>
        <source>%1 分钟</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>刚刚出现</source>
        <translation>Just started</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>Temperature</translation>
    </message>
    <message>
        <source>风扇</source>
        <translation>Fan</translation>
    </message>
    <message>
        <source>受限</source>
        <translation>No access</translation>
    </message>
    <message>
        <source>已暂停</source>
        <translation>Paused</translation>
    </message>
</context>
<context>
    <name>NetworkIORate</name>
    <message>
        <source>无法读取网络接口计数器</source>
        <translation>Cannot read the network interface counters</translation>
    </message>
    <message>
        <source>网络接口计数器无有效增量</source>
        <translation>Network counters did not advance</translation>
    </message>
</context>
<context>
    <name>OperationTexts</name>
    <message>
        <source>正在结束…</source>
        <translation>Ending…</translation>
    </message>
    <message>
        <source>正在强制结束…</source>
        <translation>Force quitting…</translation>
    </message>
    <message>
        <source>正在确认原进程是否退出，通常不超过 2 秒。</source>
        <translation>Checking that the process has exited; this usually takes under 2 seconds.</translation>
    </message>
    <message>
        <source>进程已结束</source>
        <translation>Process ended</translation>
    </message>
    <message>
        <source>强制结束</source>
        <translation>Force quit</translation>
    </message>
    <message>
        <source>进程仍在运行；如需继续，可再次确认强制结束。</source>
        <translation>The process is still running. To go on, confirm a force quit.</translation>
    </message>
    <message>
        <source>重试结束</source>
        <translation>Try again</translation>
    </message>
    <message>
        <source>强制结束失败</source>
        <translation>Force quit failed</translation>
    </message>
    <message>
        <source>本次操作未成功结束，未进入两分钟验证。</source>
        <translation>The process was not ended, so the two-minute verification did not start.</translation>
    </message>
    <message>
        <source>强制结束未生效，建议打开系统监视器进一步检查。</source>
        <translation>The force quit had no effect. Open System Monitor to look further.</translation>
    </message>
    <message>
        <source>结束进程并确认退出后，将验证两分钟整机变化。</source>
        <translation>Once an ended process has exited, the system is verified for two minutes.</translation>
    </message>
    <message>
        <source>正在对比操作前后的 CPU、温度和热状态。</source>
        <translation>Comparing CPU, temperature and thermal state before and after the action.</translation>
    </message>
    <message>
        <source>负载或温度已下降，验证通过。</source>
        <translation>Load or temperature has dropped. Verified.</translation>
    </message>
    <message>
        <source>两分钟内未观察到达到阈值的整机改善。</source>
        <translation>No improvement above the threshold within two minutes.</translation>
    </message>
    <message>
        <source>缺少可比较的系统样本，无法完成验证。</source>
        <translation>Not enough system samples to compare, so verification could not finish.</translation>
    </message>
    <message>
        <source>结束选中进程</source>
        <translation>End selected process</translation>
    </message>
    <message>
        <source>结束主要进程</source>
        <translation>End main process</translation>
    </message>
    <message>
        <source>%1 %2，PID %3</source>
        <translation>%1 %2, PID %3</translation>
    </message>
    <message>
        <source>选择进程后显示结束操作的影响范围。</source>
        <translation>Select a process to see what ending it would affect.</translation>
    </message>
    <message>
        <source>安全预检未通过，不能从 KilnWarden 结束这个进程。</source>
        <translation>Safety check failed: KilnWarden can&apos;t end this process.</translation>
    </message>
    <message>
        <source>%1 · PID %2</source>
        <translation>%1 · PID %2</translation>
    </message>
    <message>
        <source>%1 · PID %2 · %3</source>
        <translation>%1 · PID %2 · %3</translation>
    </message>
    <message>
        <source>最近一次操作</source>
        <translation>Last action</translation>
    </message>
    <message>
        <source>正在验证结束该进程后的整机变化 · 剩余约 %1</source>
        <translation>Verifying the system after ending the process · About %1 left</translation>
    </message>
    <message>
        <source>%1 分 %2 秒</source>
        <translation>%1 min %2 s</translation>
    </message>
    <message>
        <source>%1 秒</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>不可用</source>
        <translation>Unavailable</translation>
    </message>
</context>
<context>
    <name>OverviewAttentionList</name>
    <message>
        <source>PID %1 · %2</source>
        <translation>PID %1 · %2</translation>
    </message>
    <message>
        <source>已选择</source>
        <translation>Selected</translation>
    </message>
    <message>
        <source>需要关注</source>
        <translation>Needs attention</translation>
    </message>
    <message>
        <source>当前没有持续高负载进程</source>
        <translation>No process is under sustained high load</translation>
    </message>
</context>
<context>
    <name>OverviewRecentEventList</name>
    <message>
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
    <message>
        <source>最近事件</source>
        <translation>Recent events</translation>
    </message>
    <message>
        <source>本次会话暂无升温事件</source>
        <translation>No heat events in this session</translation>
    </message>
</context>
<context>
    <name>OverviewSystemTrend</name>
    <message>
        <source>系统趋势</source>
        <translation>System trend</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>Temperature</translation>
    </message>
    <message>
        <source>30 分钟系统趋势</source>
        <translation>30-minute system trend</translation>
    </message>
</context>
<context>
    <name>OverviewTexts</name>
    <message>
        <source>采集中</source>
        <translation>Collecting</translation>
    </message>
    <message>
        <source>风扇转速 · 自动调速</source>
        <translation>Fan speed · Automatic</translation>
    </message>
    <message>
        <source>磁盘 I/O · 当前合计</source>
        <translation>Disk I/O · Current total</translation>
    </message>
    <message>
        <source>当前温度 · %1</source>
        <translation>Temperature · %1</translation>
    </message>
    <message>
        <source>CPU 负载 · 近 5 分钟平均 %1</source>
        <translation>CPU · 5-min avg %1</translation>
    </message>
    <message>
        <source>高影响</source>
        <translation>High impact</translation>
    </message>
    <message>
        <source>中影响</source>
        <translation>Medium impact</translation>
    </message>
    <message>
        <source>低影响</source>
        <translation>Low impact</translation>
    </message>
    <message>
        <source>现在</source>
        <translation>Now</translation>
    </message>
    <message>
        <source>-%1 分钟</source>
        <translation>-%1 min</translation>
    </message>
    <message>
        <source>状态%1</source>
        <translation>State: %1</translation>
    </message>
</context>
<context>
    <name>OverviewTrendContent</name>
    <message>
        <source>温度</source>
        <translation>Temperature</translation>
    </message>
    <message>
        <source>正在采集系统趋势…</source>
        <translation>Collecting the system trend…</translation>
    </message>
</context>
<context>
    <name>ProcMeminfoMemoryProbe</name>
    <message>
        <source>无法读取 /proc/meminfo</source>
        <translation>Cannot read /proc/meminfo</translation>
    </message>
</context>
<context>
    <name>ProcStatCPUUsageProbe</name>
    <message>
        <source>/proc/stat 读取失败</source>
        <translation>Reading /proc/stat failed</translation>
    </message>
</context>
<context>
    <name>ProcessCompositionView</name>
    <message>
        <source>进程组成</source>
        <translation>Process tree</translation>
    </message>
    <message>
        <source>进程 / 安全命令</source>
        <translation>Process / redacted command</translation>
    </message>
    <message>
        <source>内存</source>
        <translation>Memory</translation>
    </message>
    <message>
        <source>资源影响</source>
        <translation>Impact</translation>
    </message>
    <message>
        <source>缩进表示当前采样内的 PPID 父子关系；多个顶层节点属于同一负载来源的关联进程。</source>
        <translation>Indented rows are child processes (by PPID); top-level rows are related processes of this source.</translation>
    </message>
    <message>
        <source>暂无进程组成</source>
        <translation>No process tree yet</translation>
    </message>
    <message>
        <source>完成进程采样后显示父子关系和节点负载。</source>
        <translation>Appears after process sampling.</translation>
    </message>
</context>
<context>
    <name>ProcessOperationPanel</name>
    <message>
        <source>进程操作</source>
        <translation>Process actions</translation>
    </message>
    <message>
        <source>负载来源建议</source>
        <translation>Suggestion</translation>
    </message>
    <message>
        <source>结束影响</source>
        <translation>Impact of ending</translation>
    </message>
    <message>
        <source>打开终端</source>
        <translation>Open terminal</translation>
    </message>
    <message>
        <source>结束选中进程</source>
        <translation>End selected process</translation>
    </message>
    <message>
        <source>本次操作验证</source>
        <translation>Verification</translation>
    </message>
    <message>
        <source>系统 CPU</source>
        <translation>CPU</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>Temp.</translation>
    </message>
    <message>
        <source>估算资源影响 %1</source>
        <translation>Estimated impact: %1</translation>
    </message>
    <message>
        <source>PID %1 · CPU %2% · 内存 %3 · 磁盘 %4 · %5</source>
        <translation>PID %1 · CPU %2% · Memory %3 · Disk %4 · %5</translation>
    </message>
    <message>
        <source>可结束</source>
        <translation>Can be ended</translation>
    </message>
    <message>
        <source>不可结束</source>
        <translation>Can&apos;t be ended</translation>
    </message>
</context>
<context>
    <name>ProcessTerminationResult</name>
    <message>
        <source>安全校验未通过：该进程不属于当前用户。</source>
        <translation>Safety check failed: this process belongs to another user.</translation>
    </message>
    <message>
        <source>安全校验未通过：KilnWarden 不能结束自身。</source>
        <translation>Safety check failed: KilnWarden cannot end itself.</translation>
    </message>
    <message>
        <source>安全校验未通过：系统关键进程不可结束。</source>
        <translation>Safety check failed: critical system processes cannot be ended.</translation>
    </message>
    <message>
        <source>安全校验未通过：该进程受保护。</source>
        <translation>Safety check failed: this process is protected.</translation>
    </message>
    <message>
        <source>任务已经结束，无需再次操作。</source>
        <translation>The task has already ended. Nothing more to do.</translation>
    </message>
    <message>
        <source>任务身份已经变化，为避免误伤未发送结束信号。</source>
        <translation>The task is no longer the same process, so no signal was sent to avoid ending the wrong one.</translation>
    </message>
    <message>
        <source>没有权限结束该任务，未进行重试。</source>
        <translation>No permission to end this task. Not retried.</translation>
    </message>
    <message>
        <source>任务已经结束，未进行重试。</source>
        <translation>The task has already ended. Not retried.</translation>
    </message>
    <message>
        <source>结束任务失败（系统错误 %1），未进行重试。</source>
        <translation>Could not end the task (system error %1). Not retried.</translation>
    </message>
    <message>
        <source>已发送强制结束请求。</source>
        <translation>Force quit request sent.</translation>
    </message>
    <message>
        <source>已发送正常结束请求。</source>
        <translation>Quit request sent.</translation>
    </message>
</context>
<context>
    <name>ProcessTree</name>
    <message>
        <source>选择后可查看该进程详情和可用操作</source>
        <translation>Select to see this process&apos;s details and actions</translation>
    </message>
</context>
<context>
    <name>ProcessTreeView</name>
    <message>
        <source>进程组成</source>
        <translation>Process tree</translation>
    </message>
</context>
<context>
    <name>ReportOptions</name>
    <message>
        <source>用法：kilnwarden-report [--samples 次数] [--interval 秒数] [--json]</source>
        <translation>usage: kilnwarden-report [--samples N] [--interval SECONDS] [--json]</translation>
    </message>
    <message>
        <source>kilnwarden-report: --samples 需要不小于 1 的整数，而不是“%1”</source>
        <translation>kilnwarden-report: --samples needs a whole number of at least 1, got &apos;%1&apos;</translation>
    </message>
    <message>
        <source>kilnwarden-report: --interval 需要大于 0 且不超过 %1 的秒数，而不是“%2”</source>
        <translation>kilnwarden-report: --interval needs a number of seconds above 0 and at most %1, got &apos;%2&apos;</translation>
    </message>
    <message>
        <source>kilnwarden-report: 未知选项“%1”</source>
        <translation>kilnwarden-report: unknown option &apos;%1&apos;</translation>
    </message>
</context>
<context>
    <name>ReportTasks</name>
    <message>
        <source>%1（PID %2）</source>
        <translation>%1 (PID %2)</translation>
    </message>
    <message>
        <source>负载来源（按持续负载排序）</source>
        <translation>Load sources (by sustained load)</translation>
    </message>
    <message>
        <source>暂无可排序的负载来源：采集两个样本后会按持续负载排序。</source>
        <translation>No load sources to rank yet: they are ranked by sustained load after two samples.</translation>
    </message>
    <message>
        <source>应用</source>
        <translation>App</translation>
    </message>
    <message>
        <source>类型</source>
        <translation>Kind</translation>
    </message>
    <message>
        <source>内存</source>
        <translation>Memory</translation>
    </message>
    <message>
        <source>磁盘</source>
        <translation>Disk</translation>
    </message>
    <message>
        <source>持续</source>
        <translation>Duration</translation>
    </message>
    <message>
        <source>目标进程</source>
        <translation>Target process</translation>
    </message>
    <message>
        <source>详情</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>诊断</source>
        <translation>Diagnosis</translation>
    </message>
    <message>
        <source>建议</source>
        <translation>Suggestion</translation>
    </message>
    <message>
        <source>置信度</source>
        <translation>Confidence</translation>
    </message>
    <message>
        <source>选中的任务：无</source>
        <translation>Selected task: none</translation>
    </message>
    <message>
        <source>选中的任务：%1（%2），目标进程 %3</source>
        <translation>Selected task: %1 (%2), target process %3</translation>
    </message>
</context>
<context>
    <name>ReportText</name>
    <message>
        <source>读数</source>
        <translation>Reading</translation>
    </message>
    <message>
        <source>当前值</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>来源或原因</source>
        <translation>Source or reason</translation>
    </message>
    <message>
        <source>CPU 使用率</source>
        <translation>CPU usage</translation>
    </message>
    <message>
        <source>热状态</source>
        <translation>Thermal state</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>Temperature</translation>
    </message>
    <message>
        <source>风扇</source>
        <translation>Fan</translation>
    </message>
    <message>
        <source>GPU</source>
        <translation>GPU</translation>
    </message>
    <message>
        <source>磁盘</source>
        <translation>Disk</translation>
    </message>
    <message>
        <source>内存</source>
        <translation>Memory</translation>
    </message>
    <message>
        <source>网络</source>
        <translation>Network</translation>
    </message>
    <message>
        <source>主要任务 %1 %2（%3）</source>
        <translation>Top task %1 %2 (%3)</translation>
    </message>
    <message>
        <source>另有 %1 个任务需要关注</source>
        <translation>+%1 more needing attention</translation>
    </message>
    <message>
        <source>菜单栏：%1；面板：%2</source>
        <translation>Tray: %1; panel: %2</translation>
    </message>
    <message>
        <source>本次运行没有升温事件。</source>
        <translation>No heat events in this run.</translation>
    </message>
    <message>
        <source>开始</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>结束</source>
        <translation>End</translation>
    </message>
    <message>
        <source>来源</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>峰值 CPU</source>
        <translation>Peak CPU</translation>
    </message>
    <message>
        <source>峰值温度</source>
        <translation>Peak temp.</translation>
    </message>
    <message>
        <source>处理</source>
        <translation>Action</translation>
    </message>
    <message>
        <source>点数</source>
        <translation>Points</translation>
    </message>
    <message>
        <source>本次运行的升温事件（最新在前）：</source>
        <translation>Heat events in this run (newest first):</translation>
    </message>
    <message>
        <source>运行时长</source>
        <translation>Running time</translation>
    </message>
    <message>
        <source>安全命令</source>
        <translation>Redacted command</translation>
    </message>
    <message>
        <source>项目</source>
        <translation>Project</translation>
    </message>
    <message>
        <source>最忙的进程（最多 %1 个）</source>
        <translation>Busiest processes (up to %1)</translation>
    </message>
    <message>
        <source>传感器</source>
        <translation>Sensor</translation>
    </message>
    <message>
        <source>可用性</source>
        <translation>Availability</translation>
    </message>
    <message>
        <source>没有采集到样本。</source>
        <translation>No samples were taken.</translation>
    </message>
    <message>
        <source>KilnWarden 报告：共 %1 个样本，以下为最后一个样本</source>
        <translation>KilnWarden report · Samples: %1 · Showing the last one</translation>
    </message>
    <message>
        <source>进程</source>
        <comment>count</comment>
        <translation>Processes</translation>
    </message>
    <message>
        <source>进程</source>
        <comment>column</comment>
        <translation>Process</translation>
    </message>
</context>
<context>
    <name>SensorReading</name>
    <message>
        <source>可用</source>
        <translation>Available</translation>
    </message>
    <message>
        <source>不支持</source>
        <translation>Not supported</translation>
    </message>
    <message>
        <source>不可用</source>
        <translation>Unavailable</translation>
    </message>
    <message>
        <source>权限受限</source>
        <translation>Permission denied</translation>
    </message>
    <message>
        <source>暂不可用</source>
        <translation>Temporarily unavailable</translation>
    </message>
    <message>
        <source>采集中</source>
        <translation>Collecting</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>偏好设置</source>
        <translation>Preferences</translation>
    </message>
    <message>
        <source>调整监控频率、提醒条件和本地数据保留方式。</source>
        <translation>Adjust the sampling rate, alert conditions and how local data is kept.</translation>
    </message>
    <message>
        <source>监控</source>
        <translation>Monitoring</translation>
    </message>
    <message>
        <source>决定 KilnWarden 如何采样本机进程和传感器。</source>
        <translation>How KilnWarden samples this computer&apos;s processes and sensors.</translation>
    </message>
    <message>
        <source>启动时自动监控</source>
        <translation>Monitor at startup</translation>
    </message>
    <message>
        <source>打开应用后立即开始采样</source>
        <translation>Start sampling as soon as the app opens</translation>
    </message>
    <message>
        <source>采样间隔</source>
        <translation>Sampling interval</translation>
    </message>
    <message>
        <source>更短间隔会增加少量系统开销</source>
        <translation>Shorter intervals add a little system overhead</translation>
    </message>
    <message>
        <source>2 秒</source>
        <translation>2 s</translation>
    </message>
    <message>
        <source>提醒</source>
        <translation>Alerts</translation>
    </message>
    <message>
        <source>只有持续达到条件时才发送通知，减少干扰。</source>
        <translation>Notifies only when a condition persists, to avoid noise.</translation>
    </message>
    <message>
        <source>允许系统通知</source>
        <translation>Allow system notifications</translation>
    </message>
    <message>
        <source>当前版本尚未请求通知权限</source>
        <translation>This version does not request notification permission yet</translation>
    </message>
    <message>
        <source>高负载持续时间</source>
        <translation>High load duration</translation>
    </message>
    <message>
        <source>由热状态、温度与持续负载共同判断</source>
        <translation>Judged from thermal state, temperature and sustained load</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>隐私与数据</source>
        <translation>Privacy and data</translation>
    </message>
    <message>
        <source>所有诊断记录仅保存在这台电脑。</source>
        <translation>All diagnostic records stay on this computer.</translation>
    </message>
    <message>
        <source>仅监控当前用户进程</source>
        <translation>Monitor only the current user&apos;s processes</translation>
    </message>
    <message>
        <source>不读取其他登录用户的任务</source>
        <translation>Other signed-in users&apos; tasks are not read</translation>
    </message>
    <message>
        <source>事件历史保留</source>
        <translation>Event history retention</translation>
    </message>
    <message>
        <source>退出 KilnWarden 后自动清空</source>
        <translation>Cleared when KilnWarden quits</translation>
    </message>
    <message>
        <source>本次会话</source>
        <translation>This session</translation>
    </message>
    <message>
        <source>清除事件历史</source>
        <translation>Clear event history</translation>
    </message>
    <message>
        <source>外观与维护</source>
        <translation>Appearance and maintenance</translation>
    </message>
    <message>
        <source>保持界面与桌面系统体验一致。</source>
        <translation>Keeps the interface consistent with your desktop.</translation>
    </message>
    <message>
        <source>外观</source>
        <translation>Appearance</translation>
    </message>
    <message>
        <source>使用为 KilnWarden 优化的浅色监控界面</source>
        <translation>A light monitoring interface designed for KilnWarden</translation>
    </message>
    <message>
        <source>浅色</source>
        <translation>Light</translation>
    </message>
    <message>
        <source>本地数据</source>
        <translation>Local data</translation>
    </message>
    <message>
        <source>立即删除本次会话的全部事件记录</source>
        <translation>Delete all of this session&apos;s event records now</translation>
    </message>
    <message>
        <source>KilnWarden 1.0 · Linux</source>
        <translation>KilnWarden 1.0 · Linux</translation>
    </message>
    <message>
        <source>恢复默认设置</source>
        <translation>Restore defaults</translation>
    </message>
</context>
<context>
    <name>SettingsSwitch</name>
    <message>
        <source>已开启</source>
        <translation>On</translation>
    </message>
    <message>
        <source>已关闭</source>
        <translation>Off</translation>
    </message>
</context>
<context>
    <name>SourceListView</name>
    <message>
        <source>负载来源</source>
        <translation>Load sources</translation>
    </message>
</context>
<context>
    <name>SourceSearch</name>
    <message>
        <source>需关注</source>
        <translation>Needs attention</translation>
    </message>
    <message>
        <source>全部来源</source>
        <translation>All sources</translation>
    </message>
</context>
<context>
    <name>SystemThermalState</name>
    <message>
        <source>正常</source>
        <translation>Nominal</translation>
    </message>
    <message>
        <source>尚可</source>
        <translation>Fair</translation>
    </message>
    <message>
        <source>严重</source>
        <translation>Serious</translation>
    </message>
    <message>
        <source>临界</source>
        <translation>Critical</translation>
    </message>
    <message>
        <source>未知</source>
        <translation>Unknown</translation>
    </message>
</context>
<context>
    <name>TaskClassification</name>
    <message>
        <source>%1 正在运行测试任务。</source>
        <translation>%1 is running tests.</translation>
    </message>
    <message>
        <source>测试仍在持续占用资源；如确认不再需要，可结束目标进程，这会中断测试。</source>
        <translation>The tests are still using resources. If you no longer need them, end the target process; this stops the tests.</translation>
    </message>
    <message>
        <source>会中断当前测试，不会删除项目文件。</source>
        <translation>Stops the current tests. Project files are not deleted.</translation>
    </message>
    <message>
        <source>%1 正在编译项目。</source>
        <translation>%1 is building a project.</translation>
    </message>
    <message>
        <source>编译通常会自行结束，建议先等待；确认卡住后再终止。</source>
        <translation>Builds usually finish on their own, so wait first. End it only once it is clearly stuck.</translation>
    </message>
    <message>
        <source>会中断当前编译，已生成的源文件不会被删除。</source>
        <translation>Stops the current build. Files already generated are kept.</translation>
    </message>
    <message>
        <source>%1 正在执行索引任务。</source>
        <translation>%1 is indexing.</translation>
    </message>
    <message>
        <source>索引通常可等待完成；频繁重复时再检查项目或系统状态。</source>
        <translation>Indexing usually finishes if you wait. If it keeps coming back, check the project or the system.</translation>
    </message>
    <message>
        <source>终止可能让索引稍后重新开始。</source>
        <translation>Ending it may make indexing start over later.</translation>
    </message>
    <message>
        <source>Docker 相关进程正在持续占用资源。</source>
        <translation>Docker processes are using resources steadily.</translation>
    </message>
    <message>
        <source>先检查正在运行的容器；不要直接结束整个 Docker 宿主。</source>
        <translation>Check the running containers first. Don&apos;t end the whole Docker host.</translation>
    </message>
    <message>
        <source>可能中断关联容器或本地开发服务。</source>
        <translation>May stop related containers or local development servers.</translation>
    </message>
    <message>
        <source>%1 正在运行本地开发服务。</source>
        <translation>%1 is running a local development server.</translation>
    </message>
    <message>
        <source>仍在开发时保留；项目暂时不用时可以结束。</source>
        <translation>Keep it while you are developing. End it when you are not using the project.</translation>
    </message>
    <message>
        <source>会停止本地开发服务，浏览器中的本地页面将无法访问。</source>
        <translation>Stops the local development server. Local pages in the browser will stop loading.</translation>
    </message>
    <message>
        <source>%1 的浏览器进程正在持续活跃。</source>
        <translation>%1 browser processes are staying busy.</translation>
    </message>
    <message>
        <source>先使用浏览器任务管理器定位页面，不建议直接退出整个浏览器。</source>
        <translation>Find the page with the browser&apos;s task manager first. Quitting the whole browser is not advised.</translation>
    </message>
    <message>
        <source>可能关闭关联页面或扩展进程。</source>
        <translation>May close related pages or extension processes.</translation>
    </message>
    <message>
        <source>Codex 正在执行持续计算任务。</source>
        <translation>Codex is running a long computation.</translation>
    </message>
    <message>
        <source>如果任务仍在推进，建议等待；确认卡住后可结束目标子进程。</source>
        <translation>If the task is still making progress, wait. If it is clearly stuck, you can end the target child process.</translation>
    </message>
    <message>
        <source>会中断当前 Codex 子任务，不会删除项目文件。</source>
        <translation>Stops the current Codex subtask. Project files are not deleted.</translation>
    </message>
    <message>
        <source>%1 存在未归因的持续负载。</source>
        <translation>%1 has sustained load of unknown cause.</translation>
    </message>
    <message>
        <source>先观察任务用途；证据不足时不建议直接结束。</source>
        <translation>Find out what the task is for first. Ending it without enough evidence is not advised.</translation>
    </message>
    <message>
        <source>无法可靠判断终止影响。</source>
        <translation>The impact of ending it can&apos;t be judged reliably.</translation>
    </message>
    <message>
        <source>%1 · %2 个进程</source>
        <translation>%1 · %2 processes</translation>
    </message>
    <message>
        <source>CPU %1%  ·  已持续 %2  ·  磁盘 %3</source>
        <translation>CPU %1%  ·  Lasting %2  ·  Disk %3</translation>
    </message>
</context>
<context>
    <name>TerminationConfirmationDialog</name>
    <message>
        <source>结束选中进程？</source>
        <translation>End the selected process?</translation>
    </message>
    <message>
        <source>系统会先重新核对进程身份，再发送一次正常结束请求。</source>
        <translation>KilnWarden will check the process&apos;s identity again, then ask it once to quit.</translation>
    </message>
    <message>
        <source>结束进程</source>
        <translation>End process</translation>
    </message>
</context>
<context>
    <name>TrendChart</name>
    <message>
        <source>，</source>
        <comment>between the series of a chart&apos;s spoken value</comment>
        <translation>, </translation>
    </message>
</context>
</TS>
