<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_Hans">
<context>
    <name>CAIChatEntryButton</name>
    <message>
        <source>AI chat is open here (scene %1)</source>
        <translation>此处的 AI 对话已开放（场景 %1）</translation>
    </message>
    <message>
        <source>Forced open by the developer override (scene %1)</source>
        <translation>已由开发者设置强制开放（场景 %1）</translation>
    </message>
    <message>
        <source>Forced closed by the developer override (scene %1)</source>
        <translation>已由开发者设置强制关闭（场景 %1）</translation>
    </message>
    <message>
        <source>Off: the server has not opened AI chat here to you (scene %1)</source>
        <translation>未开放：服务器尚未为您开放此处的 AI 对话（场景 %1）</translation>
    </message>
    <message>
        <source>Off: log in to use AI chat (scene %1)</source>
        <translation>未开放：请先登录再使用 AI 对话（场景 %1）</translation>
    </message>
    <message>
        <source>Off: the module that serves AI chat is not there (scene %1)</source>
        <translation>未开放：提供 AI 对话的模块不存在（场景 %1）</translation>
    </message>
    <message>
        <source>AI chat</source>
        <translation>AI 对话</translation>
    </message>
    <message>
        <source>AI chat, %1 (scene %2): forced open by the developer override</source>
        <translation>AI 对话，%1（场景 %2）：由开发者设置强制开放</translation>
    </message>
    <message>
        <source>AI chat, %1 (scene %2): opened by the server to this user</source>
        <translation>AI 对话，%1（场景 %2）：服务器已为此用户开放</translation>
    </message>
</context>
<context>
    <name>CAdPanelWindow</name>
    <message>
        <source>The module that serves ads is not there</source>
        <translation>提供广告的模块不存在</translation>
    </message>
    <message>
        <source>Popup panel</source>
        <translation>弹窗面板</translation>
    </message>
</context>
<context>
    <name>CComposition</name>
    <message>
        <source>Settings are neither read nor saved: their file is not available</source>
        <translation>设置无法读取和保存：文件不可用</translation>
    </message>
    <message>
        <source>Settings are not saved: their file or folder is read-only</source>
        <translation>设置不会保存：文件或文件夹为只读</translation>
    </message>
    <message>
        <source>Settings are not saved: the disk is full or fails</source>
        <translation>设置不会保存：磁盘已满或有故障</translation>
    </message>
    <message>
        <source>Settings are not saved: another client uses this folder</source>
        <translation>设置不会保存：另一个客户端正在使用此文件夹</translation>
    </message>
    <message>
        <source>Settings are not saved: a newer version wrote their file</source>
        <translation>设置不会保存：文件由更新的版本写入</translation>
    </message>
    <message>
        <source>Settings are saved later: another program locks their file</source>
        <translation>设置稍后保存：另一个程序锁定了文件</translation>
    </message>
    <message>
        <source>Starting the server</source>
        <translation>正在启动服务器</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>已连接</translation>
    </message>
    <message>
        <source>No connection (%1), trying again in %2 s</source>
        <translation>连接已断开（%1），%2 秒后重试</translation>
    </message>
    <message>
        <source>The login of user %1 is refused: %2</source>
        <translation>用户 %1 的登录被拒绝：%2</translation>
    </message>
    <message>
        <source>The server does not run (%1), starting it again</source>
        <translation>服务器未运行（%1），正在重新启动</translation>
    </message>
    <message>
        <source>The server does not answer (%1)</source>
        <translation>服务器无响应（%1）</translation>
    </message>
</context>
<context>
    <name>CMainWindow</name>
    <message>
        <source>Workbench</source>
        <translation>工作台</translation>
    </message>
    <message>
        <source>Opened: %1</source>
        <translation>已打开：%1</translation>
    </message>
</context>
<context>
    <name>CMembershipCard</name>
    <message>
        <source>Edition</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>VIP system</source>
        <translation>VIP 体系</translation>
    </message>
    <message>
        <source>Membership</source>
        <translation>会员</translation>
    </message>
    <message>
        <source>Plan</source>
        <translation>方案</translation>
    </message>
    <message>
        <source>Trial</source>
        <translation>试用</translation>
    </message>
    <message>
        <source>Renewed or free of charge</source>
        <translation>自动续费或免费</translation>
    </message>
    <message>
        <source>Asset protection</source>
        <translation>资产保护</translation>
    </message>
    <message>
        <source>Expired</source>
        <translation>已过期</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Not renewed</source>
        <translation>未续费</translation>
    </message>
    <message>
        <source>Not known</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>Days left: %1</source>
        <translation>剩余天数 %1</translation>
    </message>
    <message>
        <source>No member</source>
        <translation>非会员</translation>
    </message>
    <message>
        <source>Member</source>
        <translation>会员</translation>
    </message>
    <message>
        <source>Member of grade %1</source>
        <translation>%1 级会员</translation>
    </message>
    <message>
        <source>Membership centre</source>
        <translation>会员中心</translation>
    </message>
    <message>
        <source>Nobody is logged in</source>
        <translation>未登录</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>Newer</source>
        <translation>新</translation>
    </message>
    <message>
        <source>Older</source>
        <translation>旧</translation>
    </message>
    <message>
        <source>Right %1</source>
        <translation>权限 %1</translation>
    </message>
</context>
<context>
    <name>CNavigation</name>
    <message>
        <source>Expand the navigation</source>
        <translation>展开导航栏</translation>
    </message>
    <message>
        <source>Collapse the navigation</source>
        <translation>收起导航栏</translation>
    </message>
</context>
<context>
    <name>CNoticeBanner</name>
    <message>
        <source>The client goes on without a module. %1</source>
        <translation>客户端将在缺少模块的情况下继续运行。%1</translation>
    </message>
</context>
<context>
    <name>CTitleBar</name>
    <message>
        <source>Nobody is logged in</source>
        <translation>未登录</translation>
    </message>
    <message>
        <source>Switch the user</source>
        <translation>切换用户</translation>
    </message>
    <message>
        <source>Show or hide the workbench</source>
        <translation>显示或隐藏工作台</translation>
    </message>
    <message>
        <source>Member</source>
        <translation>会员</translation>
    </message>
</context>
<context>
    <name>CUserMenu</name>
    <message>
        <source>Find a user</source>
        <translation>查找用户</translation>
    </message>
    <message>
        <source>Log out</source>
        <translation>退出登录</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>帮助</translation>
    </message>
</context>
<context>
    <name>CVipGallery</name>
    <message>
        <source>Main texts</source>
        <translation>主文案</translation>
    </message>
    <message>
        <source>Detail texts</source>
        <translation>详情文案</translation>
    </message>
    <message>
        <source>Detail sub texts</source>
        <translation>详情副文案</translation>
    </message>
    <message>
        <source>The user has no record</source>
        <translation>该用户没有记录</translation>
    </message>
    <message>
        <source>Activation type</source>
        <translation>激活类型</translation>
    </message>
    <message>
        <source>Days left</source>
        <translation>剩余天数</translation>
    </message>
    <message>
        <source>Layout letter</source>
        <translation>布局字母</translation>
    </message>
    <message>
        <source>VIP gallery</source>
        <translation>VIP 展示</translation>
    </message>
    <message>
        <source>As the server sent it</source>
        <translation>按服务器数据</translation>
    </message>
</context>
<context>
    <name>Pages</name>
    <message>
        <source>About this right</source>
        <translation>了解此权益</translation>
    </message>
    <message>
        <source>Watchlist</source>
        <translation>自选</translation>
    </message>
    <message>
        <source>The instruments you follow</source>
        <translation>您关注的证券</translation>
    </message>
    <message>
        <source>Quotes</source>
        <translation>行情</translation>
    </message>
    <message>
        <source>Price, order book and key figures</source>
        <translation>价格、盘口与关键数据</translation>
    </message>
    <message>
        <source>Research</source>
        <translation>研究</translation>
    </message>
    <message>
        <source>What our analysts think</source>
        <translation>分析师观点</translation>
    </message>
    <message>
        <source>News</source>
        <translation>资讯</translation>
    </message>
    <message>
        <source>What moves the markets today</source>
        <translation>今日市场动态</translation>
    </message>
    <message>
        <source>Portfolio</source>
        <translation>持仓</translation>
    </message>
    <message>
        <source>What you hold, and how it does</source>
        <translation>持有资产与盈亏</translation>
    </message>
    <message>
        <source>Filled</source>
        <translation>已成交</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>已撤单</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>挂单中</translation>
    </message>
    <message>
        <source>Buying power</source>
        <translation>购买力</translation>
    </message>
    <message>
        <source>Margin used</source>
        <translation>已用保证金</translation>
    </message>
    <message>
        <source>Cash</source>
        <translation>可用资金</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Symbol</source>
        <translation>代码</translation>
    </message>
    <message>
        <source>Side</source>
        <translation>方向</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>数量</translation>
    </message>
    <message>
        <source>Order price</source>
        <translation>委托价</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Buy</source>
        <translation>买入</translation>
    </message>
    <message>
        <source>Sell</source>
        <translation>卖出</translation>
    </message>
    <message>
        <source>Today&apos;s orders</source>
        <translation>今日订单</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Condition</source>
        <translation>条件</translation>
    </message>
    <message>
        <source>Alert price</source>
        <translation>提醒价</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>最新价</translation>
    </message>
    <message>
        <source>Distance</source>
        <translation>距离</translation>
    </message>
    <message>
        <source>Rises above</source>
        <translation>涨破</translation>
    </message>
    <message>
        <source>Falls below</source>
        <translation>跌破</translation>
    </message>
    <message>
        <source>Reached</source>
        <translation>已触发</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>等待中</translation>
    </message>
    <message>
        <source>Sector</source>
        <translation>板块</translation>
    </message>
    <message>
        <source>Change %</source>
        <translation>涨跌幅</translation>
    </message>
    <message>
        <source>Advancing</source>
        <translation>上涨</translation>
    </message>
    <message>
        <source>Declining</source>
        <translation>下跌</translation>
    </message>
    <message>
        <source>Turnover</source>
        <translation>成交额</translation>
    </message>
    <message>
        <source>Leader</source>
        <translation>领涨</translation>
    </message>
    <message>
        <source>Open the quotes</source>
        <translation>查看行情</translation>
    </message>
    <message>
        <source>Sample data</source>
        <translation>示例数据</translation>
    </message>
    <message>
        <source>Avg. cost</source>
        <translation>成本价</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>市值</translation>
    </message>
    <message>
        <source>Profit / loss</source>
        <translation>盈亏</translation>
    </message>
    <message>
        <source>Total value</source>
        <translation>总资产</translation>
    </message>
    <message>
        <source>Day&apos;s result</source>
        <translation>今日盈亏</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>今日走势</translation>
    </message>
    <message>
        <source>Key figures</source>
        <translation>关键数据</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>今开</translation>
    </message>
    <message>
        <source>High</source>
        <translation>最高</translation>
    </message>
    <message>
        <source>Low</source>
        <translation>最低</translation>
    </message>
    <message>
        <source>Previous close</source>
        <translation>昨收</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>成交量</translation>
    </message>
    <message>
        <source>Market cap</source>
        <translation>总市值</translation>
    </message>
    <message>
        <source>Bid size</source>
        <translation>买量</translation>
    </message>
    <message>
        <source>Bid</source>
        <translation>买价</translation>
    </message>
    <message>
        <source>Ask</source>
        <translation>卖价</translation>
    </message>
    <message>
        <source>Ask size</source>
        <translation>卖量</translation>
    </message>
    <message>
        <source>Order book</source>
        <translation>盘口</translation>
    </message>
    <message>
        <source>Reduce</source>
        <translation>减持</translation>
    </message>
    <message>
        <source>Hold</source>
        <translation>持有</translation>
    </message>
    <message>
        <source>Target %1</source>
        <translation>目标价 %1</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>涨跌</translation>
    </message>
    <message>
        <source>Order intake turns the corner</source>
        <translation>订单增长迎来拐点</translation>
    </message>
    <message>
        <source>New lines come on stream two quarters early. We raise our estimates for the next year and see the margin back at its old level by autumn.</source>
        <translation>新产线提前两个季度投产。我们上调明年预测，预计利润率将于秋季恢复至此前水平。</translation>
    </message>
    <message>
        <source>Steady cash, few surprises</source>
        <translation>现金流稳定，惊喜不多</translation>
    </message>
    <message>
        <source>The clinics fill as planned and the dividend is covered twice. What is missing is a reason to pay more than today&apos;s price.</source>
        <translation>诊所按计划满员，股息覆盖两倍。目前缺少支撑更高价格的理由。</translation>
    </message>
    <message>
        <source>Freight rates weigh on the second half</source>
        <translation>运价拖累下半年业绩</translation>
    </message>
    <message>
        <source>Spot rates fell for the sixth week. Two ships due in spring add capacity at the wrong moment; we take our target down.</source>
        <translation>现货运价连续第六周下跌。春季交付的两艘新船在不利时点增加运力，我们下调目标价。</translation>
    </message>
    <message>
        <source>Glasshouse Software reports growth above its own guidance</source>
        <translation>Glasshouse Software 业绩增长超出自身指引</translation>
    </message>
    <message>
        <source>Pacific 200 ends the week a little higher in quiet trade</source>
        <translation>Pacific 200 指数交投清淡，本周小幅收高</translation>
    </message>
    <message>
        <source>Cygnet Robotics wins a ten-year warehouse contract</source>
        <translation>Cygnet Robotics 赢得十年期仓储合同</translation>
    </message>
    <message>
        <source>Brentfield Energy brings its third harbour wind park on line</source>
        <translation>Brentfield Energy 第三座港口风电场并网</translation>
    </message>
    <message>
        <source>Central bank keeps its rate, and says what would change its mind</source>
        <translation>央行维持利率不变，并说明调整条件</translation>
    </message>
    <message>
        <source>Dromore Logistics opens a rail link to the inland terminals</source>
        <translation>Dromore Logistics 开通内陆码头铁路专线</translation>
    </message>
    <message>
        <source>Technology</source>
        <translation>科技</translation>
    </message>
    <message>
        <source>Energy</source>
        <translation>能源</translation>
    </message>
    <message>
        <source>Health care</source>
        <translation>医疗保健</translation>
    </message>
    <message>
        <source>Industry</source>
        <translation>工业</translation>
    </message>
    <message>
        <source>Consumer goods</source>
        <translation>消费</translation>
    </message>
    <message>
        <source>Materials</source>
        <translation>材料</translation>
    </message>
    <message>
        <source>Market</source>
        <translation>市场</translation>
    </message>
    <message>
        <source>The day, sector by sector</source>
        <translation>今日各板块表现</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>提醒</translation>
    </message>
    <message>
        <source>The prices you want to hear of</source>
        <translation>您希望收到提醒的价格</translation>
    </message>
    <message>
        <source>Account</source>
        <translation>账户</translation>
    </message>
    <message>
        <source>Your means, and the day&apos;s orders</source>
        <translation>可用资金与今日订单</translation>
    </message>
    <message>
        <source>Analyst consensus</source>
        <translation>分析师共识</translation>
    </message>
    <message>
        <source>Short selling</source>
        <translation>卖空</translation>
    </message>
    <message>
        <source>Sold short</source>
        <translation>卖空量</translation>
    </message>
    <message>
        <source>Days to cover</source>
        <translation>回补天数</translation>
    </message>
    <message>
        <source>Borrow fee %</source>
        <translation>借券费率 %</translation>
    </message>
</context>
<context>
    <name>RightStates</name>
    <message>
        <source>No state</source>
        <translation>无状态</translation>
    </message>
    <message>
        <source>Limited time</source>
        <translation>限时</translation>
    </message>
    <message>
        <source>Frozen</source>
        <translation>已冻结</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>有效</translation>
    </message>
    <message>
        <source>Empty</source>
        <translation>空</translation>
    </message>
    <message>
        <source>Not activated</source>
        <translation>未激活</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>可激活</translation>
    </message>
</context>
</TS>
